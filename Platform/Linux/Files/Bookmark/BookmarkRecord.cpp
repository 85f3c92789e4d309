#include "Platform/Linux/Files/Bookmark/BookmarkRecord.h"

#include <climits>
#include <cstddef>
#include <limits>
#include <span>
#include <string_view>
#include <utility>

namespace Platform {
namespace {

// The longest path, and some room for the numbers.
constexpr std::size_t largestBookmark = PATH_MAX + 1024;

namespace Key {
constexpr std::string_view path = "Path";
constexpr std::string_view device = "Device";
constexpr std::string_view inode = "Inode";
constexpr std::string_view folder = "Folder";
constexpr std::string_view birthSeconds = "BirthSeconds";
constexpr std::string_view birthNanoseconds = "BirthNanoseconds";
} // namespace Key

PropertyList integerValue(std::uint64_t number) {
    if (std::in_range<std::int64_t>(number))
        return static_cast<std::int64_t>(number);
    return number;
}

template <class Integer>
std::optional<Integer> integerIn(const PropertyList& record, std::string_view key) {
    const auto* const value = record.find(key);
    if (value == nullptr)
        return std::nullopt;
    if (const auto* number = value->get<std::int64_t>(); number && std::in_range<Integer>(*number))
        return static_cast<Integer>(*number);
    if (const auto* number = value->get<std::uint64_t>(); number && std::in_range<Integer>(*number))
        return static_cast<Integer>(*number);
    return std::nullopt;
}

std::optional<std::string> pathIn(const PropertyList& record) {
    const auto* const value = record.find(Key::path);
    const auto* const bytes = value != nullptr ? value->get<PropertyList::Data>() : nullptr;
    if (bytes == nullptr)
        return std::nullopt;
    std::string path(reinterpret_cast<const char*>(bytes->data()), bytes->size());
    if (!path.starts_with('/') || path.find('\0') != std::string::npos || path.size() >= PATH_MAX)
        return std::nullopt;
    return path;
}

std::optional<FileIdentity> identityIn(const PropertyList& record) {
    const auto device = integerIn<std::uint64_t>(record, Key::device);
    const auto inode = integerIn<std::uint64_t>(record, Key::inode);
    const auto* const folder = record.find(Key::folder);
    const auto* const isFolder = folder != nullptr ? folder->get<bool>() : nullptr;
    if (!device || !inode || isFolder == nullptr)
        return std::nullopt;
    FileIdentity identity{
        .device = *device, .inode = *inode, .birthTime = std::nullopt, .isFolder = *isFolder};
    const auto seconds = integerIn<std::int64_t>(record, Key::birthSeconds);
    const auto nanoseconds = integerIn<std::uint32_t>(record, Key::birthNanoseconds);
    if (seconds && nanoseconds)
        identity.birthTime = {.seconds = *seconds, .nanoseconds = *nanoseconds};
    return identity;
}

} // namespace

std::optional<BookmarkRecord> BookmarkRecord::read(const BookmarkData& data) {
    if (data.size() > largestBookmark)
        return std::nullopt;
    const auto list = PropertyList::read(data, {.depth = 1, .cost = 4 * largestBookmark});
    if (!list)
        return std::nullopt;
    auto path = pathIn(*list);
    const auto identity = identityIn(*list);
    if (!path || !identity)
        return std::nullopt;
    return BookmarkRecord{.path = std::move(*path), .identity = *identity};
}

Expected<BookmarkData> BookmarkRecord::write() const {
    const auto bytes = std::as_bytes(std::span(path));
    PropertyList::Dictionary record{
        {std::string(Key::path), PropertyList::Data(bytes.begin(), bytes.end())},
        {std::string(Key::device), integerValue(identity.device)},
        {std::string(Key::inode), integerValue(identity.inode)},
        {std::string(Key::folder), identity.isFolder},
    };
    if (identity.birthTime) {
        record.emplace(Key::birthSeconds, identity.birthTime->seconds);
        record.emplace(Key::birthNanoseconds, integerValue(identity.birthTime->nanoseconds));
    }
    auto data = PropertyList(std::move(record)).write(PropertyList::Format::binary);
    if (!data)
        return Error{"cannot write the bookmark"};
    return std::move(*data);
}

} // namespace Platform
