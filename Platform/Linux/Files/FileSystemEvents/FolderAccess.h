#pragma once

#include "Platform/Linux/Files/Inotify/Inotify.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace Platform {

// The system takes no path beyond PATH_MAX, but lets trees grow deeper; these reach all of them.
// No link is followed where the path ends.

/// A watch of the item, or -1 with `errno`.
int addWatch(Inotify& inotify, const std::string& path, std::uint32_t events);

/// Calls visit(name) for each subfolder, and for what may be one where the file system does not
/// say. 0, or the `errno` value of the failure.
int forEachSubfolder(const std::string& path, const std::function<void(std::string_view)>& visit);

} // namespace Platform
