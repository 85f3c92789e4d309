#include "CorbelKit/Formats/DropItem.h"

#include "CorbelKit/Coding/Coding.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace CorbelKit {
namespace {

namespace Key {
constexpr std::string_view none = "none";
constexpr std::string_view text = "text";
constexpr std::string_view url = "url";
constexpr std::string_view payload = "_0";
} // namespace Key

/// The one case that the container names; absent, with a failure, where it names none or several.
std::optional<std::string_view> caseIn(const KeyedDecodingContainer& container) {
    std::vector<std::string_view> cases;
    for (const auto key : {Key::none, Key::text, Key::url}) {
        if (container.contains(key))
            cases.push_back(key);
    }
    if (cases.size() == 1)
        return cases.front();
    container.fail(CodingError::Kind::typeMismatch, "Invalid number of keys found, expected one.");
    return std::nullopt;
}

} // namespace

DropItem DropItem::import(const Transfer& transfer) {
    if (auto text = transfer.plainText())
        return {std::move(*text)};
    if (auto url = transfer.url())
        return {std::move(*url)};
    return {};
}

DropItem DropItem::decode(const Decoder& decoder) {
    const auto container = decoder.container();
    const auto name = caseIn(container);
    if (!name)
        return {};
    const auto nested = container.nestedContainer(*name);
    if (name == Key::text)
        return {nested.decode<std::string>(Key::payload)};
    if (name == Key::url)
        return {nested.decode<Platform::URL>(Key::payload)};
    return {};
}

void DropItem::encode(Encoder& encoder) const {
    constexpr std::array names{Key::none, Key::text, Key::url}; // in the order of the cases
    auto nested = encoder.container().nestedContainer(names.at(content.index()));
    if (const auto* text = std::get_if<std::string>(&content))
        nested.encode(Key::payload, *text);
    if (const auto* url = std::get_if<Platform::URL>(&content))
        nested.encode(Key::payload, *url);
}

} // namespace CorbelKit
