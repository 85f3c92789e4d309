#include "Platform/PropertyList/Walk.h"

#include <type_traits>
#include <vector>

namespace Platform::PropertyLists {

namespace {

template <class Container>
struct Rest {
    typename Container::const_iterator next;
    typename Container::const_iterator end;
};

using Open = std::variant<Rest<PropertyList::Array>, Rest<PropertyList::Dictionary>>;

class Walk {
public:
    explicit Walk(Receiver& receiver)
        : receiver_(receiver) {}

    bool run(const PropertyList& root) {
        if (!value(root))
            return false;
        while (!open_.empty()) {
            if (!std::visit([this](auto& rest) { return advance(rest); }, open_.back()))
                return false;
        }
        return true;
    }

private:
    bool advance(Rest<PropertyList::Array>& rest) {
        if (rest.next != rest.end)
            return value(*rest.next++);
        open_.pop_back();
        return receiver_.endArray();
    }

    bool advance(Rest<PropertyList::Dictionary>& rest) {
        if (rest.next != rest.end) {
            const auto& [key, content] = *rest.next++;
            return receiver_.wholeText(TextKind::key, key) && value(content);
        }
        open_.pop_back();
        return receiver_.endDictionary();
    }

    bool value(const PropertyList& list) {
        return std::visit([this](const auto& content) { return emit(content); }, list.value());
    }

    bool emit(const PropertyList::Array& array) {
        return receiver_.beginArray() &&
               open(Rest<PropertyList::Array>{.next = array.begin(), .end = array.end()});
    }

    bool emit(const PropertyList::Dictionary& entries) {
        return receiver_.beginDictionary() &&
               open(Rest<PropertyList::Dictionary>{.next = entries.begin(), .end = entries.end()});
    }

    bool emit(const std::string& text) { return receiver_.wholeText(TextKind::string, text); }

    bool emit(const PropertyList::Data& data) {
        return receiver_.wholeText(TextKind::data, characters(data));
    }

    bool emit(const auto& scalar) { return receiver_.scalar(scalar); }

    bool open(const Open& rest) {
        open_.push_back(rest);
        return open_.size() <= PropertyList::Limits().depth;
    }

    Receiver& receiver_;
    std::vector<Open> open_;
};

} // namespace

bool walk(const PropertyList& list, Receiver& receiver) {
    return Walk(receiver).run(list);
}

} // namespace Platform::PropertyLists
