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

/// Has the file hold the data, or else what it held before. Within a process activity of the
/// reason, which a completed write ends; after a failure its token is given back.
///
/// A file that could not be loaded is not replaced: it is given another name in its folder, such as
/// "Notes (unreadable 2026-11-22 071530).plist", which `report` names.
std::optional<Platform::Error> write(std::span<const std::byte> data, const Platform::URL& url,
                                     std::string_view reason);

/// Reports to the system log, and to the user by an alert on the main thread. Returns at once.
void report(const Platform::Error& error);

/// The bytes of the file, as the last save leaves it that was requested before; empty where there
/// is no file, or no place for one, as before the first save.
Platform::Expected<std::vector<std::byte>> read(const std::optional<Platform::URL>& url);

/// Whether what the file holds was understood. What was not, the next save sets aside.
void noteLoaded(const std::optional<Platform::URL>& url, bool isUnderstood);

/// The saved items; absent before the first save. A file that cannot be read, or that is no list of
/// such items, is an error, and is kept under another name when something is saved in its place.
template <class Item>
Platform::Expected<std::optional<std::vector<Item>>>
loadIfSaved(const std::optional<Platform::URL>& url) {
    using Items = std::optional<std::vector<Item>>;
    const auto data = read(url);
    if (!data) {
        noteLoaded(url, false);
        return data.error();
    }
    if (data->empty()) {
        noteLoaded(url, true);
        return Items();
    }
    auto items = PropertyListDecoder::ofOwnFiles().decode<std::vector<Item>>(*data);
    noteLoaded(url, static_cast<bool>(items));
    if (!items)
        return items.error().error();
    return Items(std::move(*items));
}

/// Likewise, with none before the first save.
template <class Item>
Platform::Expected<std::vector<Item>> load(const std::optional<Platform::URL>& url) {
    auto items = loadIfSaved<Item>(url);
    if (!items)
        return items.error();
    return std::move(*items).value_or(std::vector<Item>());
}

} // namespace CorbelKit::UserDataFile
