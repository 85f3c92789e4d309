#include "CorbelKit/Coding/Coding.h"

#include "Platform/Base64.h"

#include <chrono>
#include <cmath>
#include <limits>
#include <string_view>

namespace CorbelKit {
namespace {

using Platform::PropertyList;
using Platform::URL;

constexpr std::string_view relativeKey = "relative";
constexpr std::string_view baseKey = "base";

/// The date from which Foundation counts.
constexpr PropertyList::Date referenceDate =
    std::chrono::sys_days(std::chrono::year(2001) / std::chrono::January / 1);

template <class T>
T valueOf(const Decoder& decoder, std::string_view typeName) {
    const auto* value = decoder.value().get<T>(); // also the text that may stand for null
    if (value == nullptr) {
        decoder.failToExpect(typeName);
        return {};
    }
    return *value;
}

} // namespace

bool Coding<bool>::decode(const Decoder& decoder) {
    return valueOf<bool>(decoder, "Bool");
}

double Coding<double>::decode(const Decoder& decoder) {
    if (const auto* number = decoder.value().get<std::int64_t>())
        return static_cast<double>(*number);
    if (const auto* number = decoder.value().get<std::uint64_t>())
        return static_cast<double>(*number);
    return valueOf<double>(decoder, "Double");
}

void Coding<double>::encode(double value, Encoder& encoder) {
    if (encoder.format() == CodingFormat::json && !std::isfinite(value))
        encoder.fail("JSON has no number for this one, which is not finite.");
    encoder.put(value);
}

float Coding<float>::decode(const Decoder& decoder) {
    const auto number = decoder.decode<double>();
    if (!std::isfinite(number) || std::abs(number) <= std::numeric_limits<float>::max())
        return static_cast<float>(number);
    decoder.fail(CodingError::Kind::dataCorrupted, "Parsed number does not fit in Float.");
    return placeholder();
}

std::string Coding<std::string>::decode(const Decoder& decoder) {
    return valueOf<std::string>(decoder, "String");
}

PropertyList::Data Coding<PropertyList::Data>::decode(const Decoder& decoder) {
    if (decoder.format() == CodingFormat::propertyList)
        return valueOf<PropertyList::Data>(decoder, "Data");
    const auto bytes = Platform::base64DecodedData(valueOf<std::string>(decoder, "Data"));
    if (!bytes)
        decoder.fail(CodingError::Kind::dataCorrupted, "Encountered Data is not valid Base64.");
    return bytes.value_or(PropertyList::Data());
}

void Coding<PropertyList::Data>::encode(const PropertyList::Data& value, Encoder& encoder) {
    if (encoder.format() == CodingFormat::propertyList) {
        encoder.put(value);
        return;
    }
    const auto* characters = reinterpret_cast<const char*>(value.data());
    encoder.put(Platform::base64EncodedString({characters, value.size()}));
}

PropertyList::Date Coding<PropertyList::Date>::decode(const Decoder& decoder) {
    if (decoder.format() == CodingFormat::propertyList)
        return valueOf<PropertyList::Date>(decoder, "Date");
    return referenceDate + std::chrono::duration<double>(decoder.decode<double>());
}

void Coding<PropertyList::Date>::encode(PropertyList::Date value, Encoder& encoder) {
    if (encoder.format() == CodingFormat::propertyList) {
        encoder.put(value);
    } else {
        encoder.encode((value - referenceDate).count());
    }
}

// The depth of bases within bases is that of the property list, which has a bound.
URL Coding<URL>::decode(const Decoder& decoder) {
    std::optional<URL> url;
    if (decoder.format() == CodingFormat::json) {
        url = URL::parse(decoder.decode<std::string>());
    } else {
        const auto container = decoder.container();
        const auto text = container.decode<std::string>(relativeKey);
        const auto base = container.decodeIfPresent<URL>(baseKey);
        url = base ? URL::parse(text, *base) : URL::parse(text);
    }
    if (!url)
        decoder.fail(CodingError::Kind::dataCorrupted, "Invalid URL string.");
    return url ? std::move(*url) : placeholder();
}

void Coding<URL>::encode(const URL& value, Encoder& encoder) {
    if (encoder.format() == CodingFormat::json) {
        encoder.put(value.absoluteString());
    } else {
        encoder.container().encode(relativeKey, value.absoluteString());
    }
}

URL Coding<URL>::placeholder() {
    return URL::file("/");
}

Platform::UUID Coding<Platform::UUID>::decode(const Decoder& decoder) {
    const auto identifier = Platform::UUID::parse(valueOf<std::string>(decoder, "UUID"));
    if (!identifier)
        decoder.fail(CodingError::Kind::dataCorrupted, "Invalid UUID string.");
    return identifier.value_or(placeholder());
}

} // namespace CorbelKit
