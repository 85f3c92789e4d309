#include "Platform/PropertyList/TreeBuilder.h"

#include <algorithm>
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

bool TreeBuilder::begin(PropertyList container) {
    containers_.push_back({std::move(container), {}});
    return cost_.chargeValue();
}

bool TreeBuilder::end() {
    auto value = std::move(containers_.back().value);
    containers_.pop_back();
    add(std::move(value));
    return true;
}

bool TreeBuilder::scalar(const Scalar& scalar) {
    add(std::visit([](const auto& value) { return PropertyList(value); }, scalar));
    return cost_.chargeValue();
}

bool TreeBuilder::beginText(TextKind kind) {
    textKind_ = kind;
    text_.clear();
    return kind == TextKind::key ? cost_.chargeEntry() : cost_.chargeValue();
}

bool TreeBuilder::text(std::string_view piece) {
    if (!cost_.charge(piece.size()))
        return false;
    text_.append(piece);
    return true;
}

bool TreeBuilder::endText() {
    switch (textKind_) {
    case TextKind::key:
        containers_.back().key.swap(text_);
        break;
    case TextKind::string:
        add(PropertyList(std::move(text_)));
        break;
    case TextKind::data:
        const auto bytes = std::as_bytes(std::span(text_));
        add(PropertyList(PropertyList::Data(bytes.begin(), bytes.end())));
        break;
    }
    return true;
}

void TreeBuilder::add(PropertyList&& value) {
    if (containers_.empty()) {
        result_ = std::move(value);
        return;
    }
    auto& [container, key] = containers_.back();
    auto& content = container.value();
    if (auto* const array = std::get_if<PropertyList::Array>(&content)) {
        array->push_back(std::move(value));
        return;
    }
    auto& entries = std::get<PropertyList::Dictionary>(content);
    // Most writers put the keys in order.
    if (entries.empty() || entries.rbegin()->first < key) {
        entries.emplace_hint(entries.end(), std::move(key), std::move(value));
    } else {
        entries.insert_or_assign(std::move(key), std::move(value));
    }
}

} // namespace Platform::PropertyLists
