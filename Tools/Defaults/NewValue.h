#pragma once

#include "Platform/Expected.h"
#include "Platform/PropertyList.h"

#include <span>
#include <string_view>

namespace Defaults {

/// What `write` is to store, from the words behind the key: a text, or what the option in front
/// says. Gives the reason where they make no such value.
class NewValue {
public:
    static Platform::Expected<NewValue> parse(std::span<const std::string_view> words);

    /// Puts it in the place of the value before, or behind its elements. Gives the reason where
    /// that one has none, and leaves it then.
    std::optional<Platform::Error> store(Platform::PropertyList::Dictionary& values,
                                         std::string_view key) const;

private:
    NewValue(Platform::PropertyList value, bool isAddition)
        : value_(std::move(value))
        , isAddition_(isAddition) {}

    Platform::PropertyList value_;
    bool isAddition_;
};

} // namespace Defaults
