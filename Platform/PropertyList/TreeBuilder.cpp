#include "Platform/PropertyList/TreeBuilder.h"

#include <iterator>
#include <limits>
#include <utility>

namespace Platform::PropertyLists {

bool TreeBuilder::beginDictionary() {
    return begin(PropertyList::Dictionary());
}

bool TreeBuilder::endDictionary() {
    return end();
}

bool TreeBuilder::beginArray() {
    return begin(PropertyList::Array());
}

bool TreeBuilder::endArray() {
    return end();
}

// The room is taken at once: so it is paid for at once, or many arrays could take it unpaid.
bool TreeBuilder::expectValues(std::size_t count) {
    constexpr auto most = std::numeric_limits<std::size_t>::max() / sizeof(PropertyList);
    if (count > most || !cost_.charge(count * sizeof(PropertyList)))
        return false;
    auto& container = containers_.back();
    std::get_if<PropertyList::Array>(&container.value.value())->reserve(count);
    container.isPaid = true;
    return true;
}

bool TreeBuilder::chargeValue() {
    return (!containers_.empty() && containers_.back().isPaid) || cost_.chargeValue();
}

bool TreeBuilder::begin(PropertyList container) {
    const bool isAffordable = chargeValue();
    containers_.push_back({.value = std::move(container)});
    return isAffordable;
}

bool TreeBuilder::end() {
    auto& ended = containers_.back();
    if (containers_.size() == 1) {
        result_ = std::move(ended.value);
    } else {
        addTo(*std::prev(containers_.end(), 2), std::move(ended.value));
    }
    containers_.pop_back();
    return true;
}

bool TreeBuilder::scalar(const Scalar& scalar) {
    std::visit([this](const auto& value) { add(value); }, scalar);
    return chargeValue();
}

bool TreeBuilder::beginText(TextKind kind) {
    textKind_ = kind;
    text_.clear();
    return chargeText(kind);
}

bool TreeBuilder::text(std::string_view piece) {
    if (!cost_.charge(piece.size()))
        return false;
    text_.append(piece);
    return true;
}

bool TreeBuilder::endText() {
    addText(textKind_, text_);
    return true;
}

bool TreeBuilder::wholeText(TextKind kind, std::string_view content) {
    if (!chargeText(kind) || !cost_.charge(content.size()))
        return false;
    addText(kind, content);
    return true;
}

bool TreeBuilder::chargeText(TextKind kind) {
    return kind == TextKind::key ? cost_.chargeEntry() : chargeValue();
}

// A copy takes no more than its own length, and leaves the buffer for the next text.
void TreeBuilder::addText(TextKind kind, std::string_view content) {
    switch (kind) {
    case TextKind::key:
        containers_.back().key = content;
        break;
    case TextKind::string:
        add(std::string(content));
        break;
    case TextKind::data:
        const auto bytes = std::as_bytes(std::span(content));
        add(PropertyList::Data(bytes.begin(), bytes.end()));
        break;
    }
}

template <class T>
void TreeBuilder::add(T&& value) {
    if (containers_.empty()) {
        result_ = PropertyList(std::forward<T>(value));
    } else {
        addTo(containers_.back(), std::forward<T>(value));
    }
}

template <class T>
void TreeBuilder::addTo(Container& parent, T&& value) {
    auto& content = parent.value.value();
    if (auto* const array = std::get_if<PropertyList::Array>(&content)) {
        array->emplace_back(std::forward<T>(value));
        return;
    }
    auto& entries = *std::get_if<PropertyList::Dictionary>(&content);
    // Most writers put the keys in order.
    if (entries.empty() || entries.rbegin()->first < parent.key) {
        entries.emplace_hint(entries.end(), std::move(parent.key), std::forward<T>(value));
    } else {
        entries.insert_or_assign(std::move(parent.key), PropertyList(std::forward<T>(value)));
    }
}

} // namespace Platform::PropertyLists
