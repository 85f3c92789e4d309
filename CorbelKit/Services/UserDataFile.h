#pragma once

#include "CorbelKit/Coding/PropertyListCoder.h"
#include "Platform/Expected.h"
#include "Platform/URL.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

/// What all savers and loaders of user data do alike. Callable on any thread.
namespace CorbelKit::UserDataFile {

/// Writes in place within a process activity of the reason, which a completed write ends; after a
/// failure its token is given back.
std::optional<Platform::Error> write(std::span<const std::byte> data, const Platform::URL& url,
                                     std::string_view reason);

/// Tells the system log, and the user by an alert on the main thread. Returns at once.
void report(const Platform::Error& error);

/// The bytes of the file; empty where there is no file, or no place for one, as before the first
/// save.
Platform::Expected<std::vector<std::byte>> read(const std::optional<Platform::URL>& url);

/// The saved items; none before the first save. A file that cannot be read, or that is no list of
/// such items, is an error: to save over it would lose what it holds.
template <class Item>
Platform::Expected<std::vector<Item>> load(const std::optional<Platform::URL>& url) {
    const auto data = read(url);
    if (!data)
        return data.error();
    if (data->empty())
        return std::vector<Item>();
    auto items = PropertyListDecoder::shared().decode<std::vector<Item>>(*data);
    if (!items)
        return items.error().error();
    return std::move(*items);
}

} // namespace CorbelKit::UserDataFile
