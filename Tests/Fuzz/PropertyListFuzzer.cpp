#include "Platform/PropertyList.h"
#include "Platform/PropertyListLookup.h"

#include <cstdio>
#include <cstdlib>

namespace {

using Platform::PropertyList;
using Bytes = std::span<const std::byte>;

void require(bool condition, const char* claim) {
    if (condition)
        return;
    std::fprintf(stderr, "not so: %s\n", claim);
    std::abort();
}

std::optional<std::string> textUnder(const std::optional<PropertyList>& list,
                                     std::string_view key) {
    const auto* const value = list ? list->find(key) : nullptr;
    const auto* const text = value != nullptr ? value->get<std::string>() : nullptr;
    return text != nullptr ? std::optional(*text) : std::nullopt;
}

std::optional<std::string> lookUp(Bytes bytes, std::string_view key, std::size_t chunk) {
    Platform::PropertyListLookup lookup(key, {.maximumText = bytes.size() * 4 + 1024});
    for (; bytes.size() > chunk; bytes = bytes.subspan(chunk))
        lookup.append(bytes.first(chunk));
    lookup.append(bytes);
    return lookup.finish();
}

void checkLookup(Bytes bytes, const std::optional<PropertyList>& list) {
    std::string key = "Label";
    if (list && list->get<PropertyList::Dictionary>() != nullptr &&
        !list->get<PropertyList::Dictionary>()->empty())
        key = list->get<PropertyList::Dictionary>()->begin()->first;
    const auto expected = textUnder(list, key);
    for (const auto chunk : {std::size_t{1}, bytes.size() / 2 + 1, bytes.size() + 1})
        require(lookUp(bytes, key, chunk) == expected, "the look-up finds what reading finds");
}

/// What was written once is written in the same way again when it has been read.
void checkRoundTrip(const PropertyList& list, PropertyList::Format format) {
    const auto written = list.write(format);
    require(written || format != PropertyList::Format::binary, "the binary form holds every list");
    if (!written)
        return;
    const auto again = PropertyList::read(*written);
    require(again && *again->write(format) == *written, "what is written is read");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = std::as_bytes(std::span(data, size));
    const auto list = PropertyList::read(bytes);
    checkLookup(bytes, list);
    if (list) {
        checkRoundTrip(*list, PropertyList::Format::xml);
        checkRoundTrip(*list, PropertyList::Format::binary);
    }
    return 0;
}
