#include "Tools/Defaults/NewValue.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>

namespace Defaults {
namespace {

using Platform::Error;
using Platform::Expected;
using Platform::PropertyList;

Expected<PropertyList> integer(std::string_view text) {
    std::int64_t number = 0;
    const auto digits = text.starts_with("+-") ? text : text.substr(text.starts_with('+') ? 1 : 0);
    const auto* const end = std::to_address(digits.end());
    const auto [rest, failure] = std::from_chars(std::to_address(digits.begin()), end, number);
    if (failure == std::errc::result_out_of_range)
        return Error{std::string(text) + " is beyond 64 bits"};
    if (failure != std::errc() || rest != end)
        return Error{std::string(text) + " is no whole number"};
    return PropertyList(number);
}

Expected<PropertyList> boolean(std::string_view text) {
    std::string word(text);
    std::ranges::transform(word, word.begin(), [](char one) {
        return one >= 'A' && one <= 'Z' ? static_cast<char>(one - 'A' + 'a') : one;
    });
    if (word == "yes" || word == "true" || word == "1")
        return PropertyList(true);
    if (word == "no" || word == "false" || word == "0")
        return PropertyList(false);
    return Error{std::string(text) + " is none of yes, no, true, false, 1 and 0"};
}

PropertyList array(std::span<const std::string_view> words) {
    PropertyList::Array elements;
    for (const auto word : words)
        elements.emplace_back(std::string(word));
    return elements;
}

} // namespace

Expected<NewValue> NewValue::parse(std::span<const std::string_view> words) {
    if (words.empty())
        return Error{"there is no value to write"};
    const auto kind = words.front();
    const auto values = words.subspan(1);
    if (kind == "-array" || kind == "-array-add")
        return NewValue(array(values), kind == "-array-add");
    if (!kind.starts_with('-') && values.empty())
        return NewValue(std::string(kind), false);
    if (kind != "-string" && kind != "-int" && kind != "-bool") {
        return Error{kind.starts_with('-') ? "there is no option " + std::string(kind)
                                           : "there is more than one value; see -array"};
    }
    if (values.size() != 1)
        return Error{std::string(kind) + " takes one value"};
    if (kind == "-string")
        return NewValue(std::string(values[0]), false);
    auto value = kind == "-int" ? integer(values[0]) : boolean(values[0]);
    if (!value)
        return value.error();
    return NewValue(std::move(*value), false);
}

std::optional<Error> NewValue::store(PropertyList::Dictionary& values, std::string_view key) const {
    auto& stored = values[std::string(key)];
    if (!isAddition_ || stored.get<PropertyList::Null>() != nullptr) {
        stored = value_;
        return std::nullopt;
    }
    auto* const elements = std::get_if<PropertyList::Array>(&stored.value());
    if (elements == nullptr)
        return Error{std::string(key) + " is no array"};
    std::ranges::copy(*value_.get<PropertyList::Array>(), std::back_inserter(*elements));
    return std::nullopt;
}

} // namespace Defaults
