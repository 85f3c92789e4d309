#include "CorbelKit/Coding/Decoder.h"

#include "Platform/NeverDestroyed.h"

#include <cmath>

namespace CorbelKit {
namespace {

using Platform::PropertyList;

const PropertyList& nothing() {
    static const Platform::NeverDestroyed<PropertyList> null;
    return null.get();
}

struct KindName {
    const char* operator()(PropertyList::Null /*value*/) const { return "a null value"; }

    const char* operator()(bool /*value*/) const { return "a boolean"; }

    const char* operator()(const PropertyList::Date& /*value*/) const { return "a date"; }

    const char* operator()(const PropertyList::Data& /*value*/) const { return "data"; }

    const char* operator()(const std::string& /*value*/) const { return "a string"; }

    const char* operator()(PropertyList::UID /*value*/) const { return "a UID"; }

    const char* operator()(const PropertyList::Array& /*value*/) const { return "an array"; }

    const char* operator()(const PropertyList::Dictionary& /*value*/) const {
        return "a dictionary";
    }

    const char* operator()(auto /*number*/) const { return "a number"; }
};

/// The integer that the value stands for: as a sign and a magnitude, since neither 64-bit type
/// holds all.
struct Integer {
    bool isNegative = false;
    std::uint64_t magnitude = 0;
};

Integer integerOf(std::int64_t value) {
    const auto bits = static_cast<std::uint64_t>(value);
    return {.isNegative = value < 0, .magnitude = value < 0 ? 0 - bits : bits};
}

/// Absent for a fraction, and for what has more than 64 bits.
std::optional<Integer> integerOf(double value) {
    const double magnitude = std::abs(value);
    if (!(magnitude < std::ldexp(1.0, 64)) || std::trunc(value) != value)
        return std::nullopt;
    return Integer{.isNegative = value < 0, .magnitude = static_cast<std::uint64_t>(magnitude)};
}

std::optional<Integer> integerOf(const PropertyList& value) {
    if (const auto* number = value.get<std::int64_t>())
        return integerOf(*number);
    if (const auto* number = value.get<std::uint64_t>())
        return Integer{.isNegative = false, .magnitude = *number};
    const auto* number = value.get<double>();
    return number != nullptr ? integerOf(*number) : std::nullopt;
}

bool isNumber(const PropertyList& value) {
    return value.get<std::int64_t>() != nullptr || value.get<std::uint64_t>() != nullptr ||
           value.get<double>() != nullptr;
}

} // namespace

Decoder Decoder::descend(const PropertyList& value, CodingKey key) const {
    auto path = codingPath_;
    path.push_back(std::move(key));
    return {value, std::move(path), *decoding_};
}

bool Decoder::isNull() const {
    if (value_->get<PropertyList::Null>() != nullptr)
        return true;
    const auto* text = value_->get<std::string>();
    return format() == CodingFormat::propertyList && text != nullptr &&
           *text == nullInPropertyLists;
}

void Decoder::fail(CodingError::Kind kind, std::string debugDescription) const {
    if (!hasFailed()) {
        decoding_->error = CodingError{.kind = kind,
                                       .codingPath = codingPath_,
                                       .debugDescription = std::move(debugDescription)};
    }
}

void Decoder::failToExpect(std::string_view typeName) const {
    if (isNull()) {
        fail(CodingError::Kind::valueNotFound,
             "Expected " + std::string(typeName) + " but found null instead.");
        return;
    }
    fail(CodingError::Kind::typeMismatch,
         "Expected to decode " + std::string(typeName) + " but found " +
             std::visit(KindName(), value_->value()) + " instead.");
}

std::uint64_t Decoder::integer(std::int64_t least, std::uint64_t most,
                               std::string_view typeName) const {
    const auto found = integerOf(*value_);
    if (found && found->magnitude <= (found->isNegative ? integerOf(least).magnitude : most))
        return found->isNegative ? 0 - found->magnitude : found->magnitude;
    if (isNumber(*value_)) {
        fail(CodingError::Kind::dataCorrupted,
             "Parsed number does not fit in " + std::string(typeName) + ".");
    } else {
        failToExpect(typeName);
    }
    return 0;
}

KeyedDecodingContainer Decoder::container() const {
    if (value_->get<PropertyList::Dictionary>() == nullptr)
        failToExpect("Dictionary");
    return KeyedDecodingContainer(*this);
}

UnkeyedDecodingContainer Decoder::unkeyedContainer() const {
    if (value_->get<PropertyList::Array>() == nullptr)
        failToExpect("Array");
    return UnkeyedDecodingContainer(*this);
}

std::vector<std::string_view> KeyedDecodingContainer::allKeys() const {
    std::vector<std::string_view> keys;
    if (const auto* entries = decoder_.value().get<PropertyList::Dictionary>()) {
        for (const auto& [key, value] : *entries)
            keys.emplace_back(key);
    }
    return keys;
}

const PropertyList* KeyedDecodingContainer::find(std::string_view key) const {
    return decoder_.value().find(key);
}

Decoder KeyedDecodingContainer::decoderFor(std::string_view key) const {
    const auto* value = find(key);
    return decoder_.descend(value != nullptr ? *value : nothing(), key);
}

std::optional<Decoder> KeyedDecodingContainer::present(std::string_view key) const {
    if (decoder_.hasFailed() || !contains(key))
        return std::nullopt;
    auto decoder = decoderFor(key);
    return decoder.isNull() ? std::nullopt : std::optional(std::move(decoder));
}

std::optional<Decoder> KeyedDecodingContainer::required(std::string_view key) const {
    if (decoder_.hasFailed())
        return std::nullopt;
    if (!contains(key)) {
        fail(CodingError::Kind::keyNotFound,
             "No value associated with key \"" + std::string(key) + "\".");
        return std::nullopt;
    }
    return decoderFor(key);
}

KeyedDecodingContainer KeyedDecodingContainer::nestedContainer(std::string_view key) const {
    const auto decoder = required(key);
    return decoder ? decoder->container() : KeyedDecodingContainer(decoderFor(key));
}

UnkeyedDecodingContainer
KeyedDecodingContainer::nestedUnkeyedContainer(std::string_view key) const {
    const auto decoder = required(key);
    return decoder ? decoder->unkeyedContainer() : UnkeyedDecodingContainer(decoderFor(key));
}

std::size_t UnkeyedDecodingContainer::count() const {
    const auto* elements = decoder_.value().get<PropertyList::Array>();
    return elements != nullptr && !decoder_.hasFailed() ? elements->size() : 0;
}

std::optional<Decoder> UnkeyedDecodingContainer::next() {
    if (decoder_.hasFailed())
        return std::nullopt;
    const CodingKey key(index_);
    if (isAtEnd()) {
        decoder_.descend(nothing(), key)
            .fail(CodingError::Kind::valueNotFound, "Unkeyed container is at end.");
        return std::nullopt;
    }
    const auto& elements = *decoder_.value().get<PropertyList::Array>();
    return decoder_.descend(elements[index_++], key);
}

} // namespace CorbelKit
