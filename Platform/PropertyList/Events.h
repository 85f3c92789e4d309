#pragma once

#include "Platform/PropertyList.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <variant>

namespace Platform::PropertyLists {

/// The values that come whole. Texts and data come in pieces.
using Scalar = std::variant<PropertyList::Null, bool, std::int64_t, std::uint64_t, double,
                            PropertyList::Date, PropertyList::UID>;

enum class TextKind : std::uint8_t { key, string, data };

/// Takes a property list as it is read, in order. The source promises a well-formed sequence: one
/// value at the root, and in a dictionary a key before each value. A receiver that answers false
/// gets nothing more.
class Receiver {
public:
    virtual bool beginDictionary() = 0;
    virtual bool endDictionary() = 0;
    virtual bool beginArray() = 0;
    virtual bool endArray() = 0;

    /// From a source that knows it: how many values the array that has just begun will have.
    virtual bool expectValues(std::size_t /*count*/) { return true; }

    virtual bool scalar(const Scalar& scalar) = 0;
    virtual bool beginText(TextKind kind) = 0;
    /// UTF-8 in whole characters; for data, any bytes.
    virtual bool text(std::string_view piece) = 0;
    virtual bool endText() = 0;

    /// The three above at once, for a source that has the text whole.
    virtual bool wholeText(TextKind kind, std::string_view content) {
        return beginText(kind) && text(content) && endText();
    }

protected:
    ~Receiver() = default;
};

/// The tariff of `PropertyList::Limits::cost`, charged while the values pass.
class Cost {
public:
    explicit Cost(std::size_t limit)
        : left_(limit) {}

    bool chargeValue() { return charge(sizeof(PropertyList)); }

    /// What a dictionary's entry takes beyond its value and the characters of its key.
    bool chargeEntry() { return charge(sizeof(std::string) + 4 * sizeof(void*)); }

    bool charge(std::size_t bytes) {
        if (bytes > left_)
            return false;
        left_ -= bytes;
        return true;
    }

private:
    std::size_t left_;
};

inline std::string_view characters(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace Platform::PropertyLists
