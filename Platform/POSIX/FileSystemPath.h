#pragma once

#include "Platform/URL.h"

#include <optional>
#include <string>
#include <string_view>

namespace Platform {

/// The path to hand to the system. Absent for a URL that is no file's, and for a path that the
/// system would take for a different one.
std::optional<std::string> fileSystemPath(const URL& url);

/// Whether a file can be called by the name, which is not empty and stands for no folder, and the
/// suffix together.
bool canNameFile(std::string_view name, std::string_view suffix);

} // namespace Platform
