#include "CorbelKit/Coding/Encoder.h"

#include "Platform/UTF8.h"

namespace CorbelKit {

using Platform::PropertyList;

KeyedEncodingContainer Encoder::container() {
    if (place_->get<PropertyList::Dictionary>() == nullptr)
        *place_ = PropertyList::Dictionary();
    return KeyedEncodingContainer(*this);
}

UnkeyedEncodingContainer Encoder::unkeyedContainer() {
    if (place_->get<PropertyList::Array>() == nullptr)
        *place_ = PropertyList::Array();
    return UnkeyedEncodingContainer(*this);
}

void Encoder::encodeNull() {
    if (format() == CodingFormat::json) {
        *place_ = PropertyList::Null();
    } else {
        *place_ = std::string(nullInPropertyLists);
    }
}

void Encoder::put(PropertyList value) {
    const auto* text = value.get<std::string>();
    if (text != nullptr && !Platform::UTF8::isWellFormed(*text))
        fail("The text is not UTF-8.");
    *place_ = std::move(value);
}

void Encoder::fail(std::string debugDescription) {
    if (!encoding_->error) {
        encoding_->error = CodingError{.kind = CodingError::Kind::invalidValue,
                                       .codingPath = codingPath_,
                                       .debugDescription = std::move(debugDescription)};
    }
}

void Encoder::refuseNull() {
    const auto* text = place_->get<std::string>();
    if (format() == CodingFormat::propertyList && text != nullptr && *text == nullInPropertyLists)
        fail("The text stands for no value in a property list.");
}

Encoder Encoder::descend(PropertyList& place, CodingKey key) const {
    auto path = codingPath_;
    path.push_back(std::move(key));
    return {place, std::move(path), *encoding_};
}

Encoder KeyedEncodingContainer::encoderFor(std::string_view key) {
    auto& entries = std::get<PropertyList::Dictionary>(encoder_.place_->value());
    auto encoder = encoder_.descend(entries[std::string(key)], key);
    if (!Platform::UTF8::isWellFormed(key))
        encoder.fail("The key is not UTF-8.");
    return encoder;
}

KeyedEncodingContainer KeyedEncodingContainer::nestedContainer(std::string_view key) {
    return encoderFor(key).container();
}

Encoder UnkeyedEncodingContainer::encoderForNext() {
    auto& elements = std::get<PropertyList::Array>(encoder_.place_->value());
    const CodingKey key(elements.size());
    return encoder_.descend(elements.emplace_back(), key);
}

} // namespace CorbelKit
