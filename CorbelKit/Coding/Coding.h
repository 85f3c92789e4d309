#pragma once

#include "CorbelKit/Coding/Decoder.h"
#include "CorbelKit/Coding/Encoder.h"
#include "Platform/PropertyList.h"
#include "Platform/URL.h"
#include "Platform/UUID.h"

#include <concepts>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// How the types of the language, and those that property lists know, are coded.
namespace CorbelKit {

template <>
struct Coding<bool> {
    static bool decode(const Decoder& decoder);

    static void encode(bool value, Encoder& encoder) { encoder.put(value); }

    static bool placeholder() { return false; }
};

/// The types of numbers; those of characters are none.
template <class T>
concept CodedInteger =
    std::integral<T> && !std::same_as<T, char> && !std::same_as<T, wchar_t> &&
    !std::same_as<T, char8_t> && !std::same_as<T, char16_t> && !std::same_as<T, char32_t>;

/// A number that does not fit the type is a failure.
template <CodedInteger T>
struct Coding<T> {
    static T decode(const Decoder& decoder) {
        using Limits = std::numeric_limits<T>;
        return static_cast<T>(decoder.integer(Limits::min(), Limits::max(), name()));
    }

    static void encode(T value, Encoder& encoder) {
        if (std::in_range<std::int64_t>(value)) {
            encoder.put(static_cast<std::int64_t>(value));
        } else {
            encoder.put(static_cast<std::uint64_t>(value));
        }
    }

    static T placeholder() { return 0; }

    static std::string name() {
        return (std::signed_integral<T> ? "Int" : "UInt") + std::to_string(sizeof(T) * 8);
    }
};

/// Any number; JSON has neither infinities nor NaN.
template <>
struct Coding<double> {
    static double decode(const Decoder& decoder);
    static void encode(double value, Encoder& encoder);

    static double placeholder() { return 0; }
};

/// As `double`, from which it is decoded as the nearest one. A number that is beyond all of them is
/// a failure.
template <>
struct Coding<float> {
    static float decode(const Decoder& decoder);

    static void encode(float value, Encoder& encoder) { encoder.encode<double>(value); }

    static float placeholder() { return 0; }
};

template <>
struct Coding<std::string> {
    static std::string decode(const Decoder& decoder);

    static void encode(const std::string& value, Encoder& encoder) { encoder.put(value); }

    static std::string placeholder() { return {}; }
};

template <>
struct Coding<Platform::PropertyList::Data> {
    using Data = Platform::PropertyList::Data;

    static Data decode(const Decoder& decoder);
    static void encode(const Data& value, Encoder& encoder);

    static Data placeholder() { return {}; }
};

template <>
struct Coding<Platform::PropertyList::Date> {
    using Date = Platform::PropertyList::Date;

    static Date decode(const Decoder& decoder);
    static void encode(Date value, Encoder& encoder);

    static Date placeholder() { return {}; }
};

/// In a property list a dictionary that holds the text under "relative", in JSON the text, as
/// Foundation codes URLs. Decoding makes a whole URL of one that has a "base", itself a URL.
template <>
struct Coding<Platform::URL> {
    static Platform::URL decode(const Decoder& decoder);
    static void encode(const Platform::URL& value, Encoder& encoder);
    static Platform::URL placeholder();
};

/// Its text, as Foundation codes it.
template <>
struct Coding<Platform::UUID> {
    static Platform::UUID decode(const Decoder& decoder);

    static void encode(const Platform::UUID& value, Encoder& encoder) {
        encoder.put(value.string());
    }

    static Platform::UUID placeholder() { return Platform::UUID({}); }
};

/// Null where there is no value. In a property list the text that stands for null is a failure.
template <class T>
struct Coding<std::optional<T>> {
    static std::optional<T> decode(const Decoder& decoder) {
        return decoder.isNull() ? std::nullopt : std::optional<T>(decoder.decode<T>());
    }

    static void encode(const std::optional<T>& value, Encoder& encoder) {
        if (value) {
            encoder.encodePresent(*value);
        } else {
            encoder.encodeNull();
        }
    }

    static std::optional<T> placeholder() { return std::nullopt; }
};

template <class T>
struct Coding<std::vector<T>> {
    static std::vector<T> decode(const Decoder& decoder) {
        std::vector<T> elements;
        for (auto container = decoder.unkeyedContainer(); !container.isAtEnd();)
            elements.push_back(container.template decode<T>());
        return elements;
    }

    static void encode(const std::vector<T>& value, Encoder& encoder) {
        auto container = encoder.unkeyedContainer();
        for (const auto& element : value)
            container.encode(element);
    }

    static std::vector<T> placeholder() { return {}; }
};

template <class T, class Compare>
struct Coding<std::map<std::string, T, Compare>> {
    using Map = std::map<std::string, T, Compare>;

    static Map decode(const Decoder& decoder) {
        Map entries;
        const auto container = decoder.container();
        for (const auto key : container.allKeys())
            entries.emplace(key, container.template decode<T>(key));
        return entries;
    }

    static void encode(const Map& value, Encoder& encoder) {
        auto container = encoder.container();
        for (const auto& [key, element] : value)
            container.encode(key, element);
    }

    static Map placeholder() { return {}; }
};

/// The value in the containers of the format, or the first failure to bring it there.
template <class T>
Platform::Expected<Platform::PropertyList, CodingError> encoded(const T& value,
                                                                CodingFormat format) {
    Encoding encoding{.format = format, .error = {}};
    Platform::PropertyList root;
    Encoder(root, {}, encoding).encode(value);
    if (encoding.error)
        return std::move(*encoding.error);
    return root;
}

/// The value from the containers of the format, or the first failure to find it there.
template <class T>
Platform::Expected<T, CodingError> decoded(const Platform::PropertyList& root,
                                           CodingFormat format) {
    Decoding decoding{.format = format, .error = {}};
    auto value = Decoder(root, {}, decoding).decode<T>();
    if (decoding.error)
        return std::move(*decoding.error);
    return value;
}

} // namespace CorbelKit
