#include "Platform/Native/ConnectionCall.h"

#include "Platform/PropertyList/Walk.h"
#include "Platform/UTF8.h"

#include <algorithm>
#include <variant>

namespace Platform {
namespace {

constexpr std::size_t longestName = 255;
constexpr std::size_t mostArguments = 32;   // their types make a signature of up to 255 characters
constexpr std::size_t deepest = 20;         // a message has 64 levels, and a dictionary takes three
constexpr std::size_t largest = 16U << 20U; // of the 32 MiB that a bus takes by default
constexpr std::size_t sizeBesideText = 32;  // of any value in a message, at most

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isOfName(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           isDigit(character) || character == '_';
}

/// Looks through the arguments up to the first that cannot be sent.
class Inspection final : public PropertyLists::Receiver {
public:
    bool beginDictionary() override { return begin(); }

    bool endDictionary() override { return end(); }

    bool beginArray() override { return begin(); }

    bool endArray() override { return end(); }

    bool scalar(const PropertyLists::Scalar& scalar) override {
        if (std::holds_alternative<PropertyList::Null>(scalar) ||
            std::holds_alternative<PropertyList::UID>(scalar)) {
            return fail("null and UID have no form in a message");
        }
        return charge(0);
    }

    bool beginText(PropertyLists::TextKind kind) override {
        kind_ = kind;
        return true;
    }

    bool text(std::string_view piece) override {
        if (kind_ != PropertyLists::TextKind::data &&
            (!UTF8::isWellFormed(piece) || piece.find('\0') != std::string_view::npos)) {
            return fail("text that is not UTF-8, or holds NUL");
        }
        return charge(piece.size());
    }

    bool endText() override { return true; }

    const std::string& fault() const { return fault_; }

    /// Of what was looked through, in bytes.
    std::size_t size() const { return size_; }

private:
    bool begin() { return ++depth_ <= deepest ? charge(0) : fail("containers nested too deeply"); }

    bool end() {
        --depth_;
        return true;
    }

    bool charge(std::size_t textSize) {
        size_ += sizeBesideText + textSize;
        return size_ <= largest || fail("too much at once");
    }

    bool fail(std::string_view fault) {
        fault_ = fault;
        return false;
    }

    std::size_t size_ = 0;
    std::size_t depth_ = 0;
    PropertyLists::TextKind kind_ = PropertyLists::TextKind::string;
    std::string fault_;
};

} // namespace

bool isMethodName(std::string_view text) {
    return !text.empty() && text.size() <= longestName && !isDigit(text.front()) &&
           std::ranges::all_of(text, isOfName);
}

Expected<std::size_t> inspectCall(std::string_view method, const PropertyList::Array& arguments) {
    if (!isMethodName(method))
        return Error{"not the name of a method"};
    if (arguments.size() > mostArguments)
        return Error{"too many arguments"};
    Inspection inspection;
    for (const auto& argument : arguments) {
        if (!PropertyLists::walk(argument, inspection))
            return Error{inspection.fault()};
    }
    return inspection.size();
}

} // namespace Platform
