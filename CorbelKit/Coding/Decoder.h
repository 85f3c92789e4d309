#pragma once

#include "CorbelKit/Coding/CodingError.h"
#include "CorbelKit/Coding/CodingFormat.h"
#include "Platform/PropertyList.h"

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace CorbelKit {

class Decoder;
class KeyedDecodingContainer;
class UnkeyedDecodingContainer;

/// How a type is coded. A type of its own takes part with the members
///
///     static T decode(const Decoder& decoder);
///     void encode(Encoder& encoder) const;
///
/// and a type that has no room for them with a specialisation: so do truth values, numbers, texts,
/// data, dates, URLs, UUIDs, and optional values, lists and dictionaries of what is coded.
template <class T>
struct Coding {
    /// The value from its coded form. A failure is noted with the decoder, and gives a placeholder.
    static T decode(const Decoder& decoder) {
        if constexpr (isDecodable) {
            return T::decode(decoder);
        } else {
            static_assert(
                isDecodable,
                "This type cannot be decoded. Give it the members `static T decode(const "
                "CorbelKit::Decoder&)` and a constructor without arguments, or specialise "
                "CorbelKit::Coding for it.");
        }
    }

    /// Puts the coded form in the encoder's place; a failure is noted there.
    static void encode(const T& value, auto& encoder) {
        constexpr bool isEncodable = requires { value.encode(encoder); };
        if constexpr (isEncodable) {
            value.encode(encoder);
        } else {
            static_assert(isEncodable, "This type cannot be encoded. Give it the member `void "
                                       "encode(CorbelKit::Encoder&) const`, or specialise "
                                       "CorbelKit::Coding for it.");
        }
    }

    /// What a failed decoding gives; nobody gets to see it.
    static T placeholder() {
        if constexpr (isDecodable) {
            return T();
        } else {
            return decodedNothing();
        }
    }

private:
    static constexpr bool isDecodable =
        std::default_initializable<T> && requires(const Decoder& decoder) {
            { T::decode(decoder) } -> std::convertible_to<T>;
        };

    static T decodedNothing(); // `decode` has said why
};

/// What one decoding has in common, and the first failure in it. Everything decoded after a failure
/// is a placeholder, so that a type reads its fields straight down and asks nothing; who started
/// the decoding gets the failure in place of the value.
struct Decoding {
    CodingFormat format = CodingFormat::propertyList; ///< in which the whole is coded
    std::optional<CodingError> error;                 ///< the first failure; absent so far
};

/// A value that is being decoded, and where it stands. It and its containers are used within the
/// decoding that made them, on one thread.
class Decoder {
public:
    /// Both the value and the decoding outlive it.
    Decoder(const Platform::PropertyList& value, CodingPath codingPath, Decoding& decoding)
        : value_(&value)
        , codingPath_(std::move(codingPath))
        , decoding_(&decoding) {}

    /// @{
    /// A value of another type is a failure, and leaves the container empty.
    KeyedDecodingContainer container() const;
    UnkeyedDecodingContainer unkeyedContainer() const;

    /// @}

    /// The value as a whole.
    template <class T>
    T decode() const {
        if (hasFailed())
            return Coding<T>::placeholder();
        return Coding<T>::decode(*this);
    }

    /// Whether it is null, or what stands for null in a property list.
    bool isNull() const;

    /// The decoder of what lies at the key.
    Decoder descend(const Platform::PropertyList& value, CodingKey key) const;

    /// The value itself, whatever it is.
    const Platform::PropertyList& value() const { return *value_; }

    /// The way from the root to the value.
    const CodingPath& codingPath() const { return codingPath_; }

    /// For a type that is coded differently in each.
    CodingFormat format() const { return decoding_->format; }

    /// Whether anything in the same decoding has failed.
    bool hasFailed() const { return decoding_->error.has_value(); }

    /// The first failure counts.
    void fail(CodingError::Kind kind, std::string debugDescription) const;
    /// Fails because the value is null, or not of the type.
    void failToExpect(std::string_view typeName) const;

    /// The value as a number within the bounds, in two's complement; 0 after a failure. A real
    /// number counts where it is whole.
    std::uint64_t integer(std::int64_t least, std::uint64_t most, std::string_view typeName) const;

private:
    const Platform::PropertyList* value_;
    CodingPath codingPath_;
    Decoding* decoding_;
};

/// The entries of a dictionary. Entries that nobody asks for do not matter.
class KeyedDecodingContainer {
public:
    /// As `Decoder::container` makes it.
    explicit KeyedDecodingContainer(Decoder decoder)
        : decoder_(std::move(decoder)) {}

    /// In the order of their bytes; valid as long as the value that is decoded.
    std::vector<std::string_view> allKeys() const;

    /// Whether there is an entry, which may hold null.
    bool contains(std::string_view key) const { return find(key) != nullptr; }

    /// A missing key is a failure, and so is null.
    template <class T>
    T decode(std::string_view key) const {
        const auto decoder = required(key);
        return decoder ? decoder->decode<T>() : Coding<T>::placeholder();
    }

    /// Absent where the key is missing or holds null; a value of another type is a failure.
    template <class T>
    std::optional<T> decodeIfPresent(std::string_view key) const {
        const auto decoder = present(key);
        return decoder ? std::optional<T>(decoder->decode<T>()) : std::nullopt;
    }

    /// @{
    /// What the key holds as a container; what cannot be one is a failure and gives an empty one.
    KeyedDecodingContainer nestedContainer(std::string_view key) const;
    UnkeyedDecodingContainer nestedUnkeyedContainer(std::string_view key) const;

    /// @}

    /// The way from the root to the dictionary.
    const CodingPath& codingPath() const { return decoder_.codingPath(); }

    /// Fails where the entries do not go together. The first failure of a decoding counts.
    void fail(CodingError::Kind kind, std::string debugDescription) const {
        decoder_.fail(kind, std::move(debugDescription));
    }

private:
    const Platform::PropertyList* find(std::string_view key) const;
    Decoder decoderFor(std::string_view key) const;
    std::optional<Decoder> present(std::string_view key) const;
    std::optional<Decoder> required(std::string_view key) const;

    Decoder decoder_;
};

/// The elements of a list, in order.
class UnkeyedDecodingContainer {
public:
    /// As `Decoder::unkeyedContainer` makes it.
    explicit UnkeyedDecodingContainer(Decoder decoder)
        : decoder_(std::move(decoder)) {}

    /// The number of elements in all; 0 after a failure.
    std::size_t count() const;

    /// Whether there is no next element.
    bool isAtEnd() const { return index_ >= count(); }

    /// The next element; beyond the end is a failure.
    template <class T>
    T decode() {
        const auto decoder = next();
        return decoder ? decoder->decode<T>() : Coding<T>::placeholder();
    }

private:
    std::optional<Decoder> next();

    Decoder decoder_;
    std::size_t index_ = 0;
};

} // namespace CorbelKit
