#pragma once

#include <optional>
#include <string>
#include <vector>

namespace JobLink {

/// Runs the tool at the absolute path, in English and without a shell, and returns what it prints,
/// standard error with it. One that goes on for ten seconds is ended. Blocks the calling thread for
/// as long.
std::string runTimedTool(const std::string& path, const std::vector<std::string>& arguments);

/// The packages that have installed the file at the path, as the package system lists them; empty
/// where none has, absent where it cannot be found out. Blocks for as long as the package system
/// takes.
std::optional<std::string> installedPackage(const std::string& path);

} // namespace JobLink
