#pragma once

#include "CorbelKit/Coding/CodingError.h"
#include "CorbelKit/Coding/Decoder.h"
#include "Platform/PropertyList.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace CorbelKit {

class KeyedEncodingContainer;
class UnkeyedEncodingContainer;

/// What one encoding has in common, and the first failure in it: who started the encoding gets it
/// in place of the result.
struct Encoding {
    CodingFormat format = CodingFormat::propertyList; ///< in which the whole is coded
    std::optional<CodingError> error;                 ///< the first failure; absent so far
};

/// The place that a value is encoded into. It and its containers are used within the encoding that
/// made them, on one thread.
class Encoder {
public:
    /// Both the place and the encoding outlive it.
    Encoder(Platform::PropertyList& place, CodingPath codingPath, Encoding& encoding)
        : place_(&place)
        , codingPath_(std::move(codingPath))
        , encoding_(&encoding) {}

    /// @{
    /// Makes the place a dictionary, or a list, unless it is one already.
    KeyedEncodingContainer container();
    UnkeyedEncodingContainer unkeyedContainer();

    /// @}

    /// The value as a whole.
    template <class T>
    void encode(const T& value) {
        Coding<T>::encode(value, *this);
    }

    /// As `encode`, where there might be null: a value that would be decoded as such is a failure.
    template <class T>
    void encodePresent(const T& value) {
        encode(value);
        refuseNull();
    }

    /// Puts null there, or what stands for it in a property list.
    void encodeNull();

    /// Puts the value there as it is, if the format has a form for it.
    void put(Platform::PropertyList value);

    /// For a type that is coded differently in each.
    CodingFormat format() const { return encoding_->format; }

    /// The way from the root to the place.
    const CodingPath& codingPath() const { return codingPath_; }

    /// The first failure counts.
    void fail(std::string debugDescription);

private:
    friend class KeyedEncodingContainer;
    friend class UnkeyedEncodingContainer;

    Encoder descend(Platform::PropertyList& place, CodingKey key) const;
    void refuseNull();

    Platform::PropertyList* place_;
    CodingPath codingPath_;
    Encoding* encoding_;
};

/// A dictionary that grows. Each key is encoded once; a key that is encoded again is replaced, and
/// a container nested under it must not be used any more.
class KeyedEncodingContainer {
public:
    /// As `Encoder::container` makes it.
    explicit KeyedEncodingContainer(Encoder encoder)
        : encoder_(std::move(encoder)) {}

    /// Makes the value the entry of the key.
    template <class T>
    void encode(std::string_view key, const T& value) {
        encoderFor(key).encode(value);
    }

    /// Nothing where there is no value.
    template <class T>
    void encodeIfPresent(std::string_view key, const std::optional<T>& value) {
        if (value)
            encoderFor(key).encodePresent(*value);
    }

    /// A dictionary as the entry of the key: the one that is there, or else an empty one.
    KeyedEncodingContainer nestedContainer(std::string_view key);

private:
    Encoder encoderFor(std::string_view key);

    Encoder encoder_;
};

/// A list that grows.
class UnkeyedEncodingContainer {
public:
    /// As `Encoder::unkeyedContainer` makes it.
    explicit UnkeyedEncodingContainer(Encoder encoder)
        : encoder_(std::move(encoder)) {}

    /// Makes the value the next element.
    template <class T>
    void encode(const T& value) {
        encoderForNext().encode(value);
    }

private:
    Encoder encoderForNext();

    Encoder encoder_;
};

} // namespace CorbelKit
