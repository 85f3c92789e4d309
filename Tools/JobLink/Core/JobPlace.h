#pragma once

#include "Platform/URL.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace JobLink {

/// Where a job file stands: an entry of one of the watched folders. A plain value.
struct JobPlace {
    Platform::URL folder;
    std::string name; ///< bytes without a slash, neither "." nor ".."

    /// As the agent has it.
    std::string path() const;
};

/// The path in a job link: what follows the scheme and "://", decoded by RFC 4648, section 4.
/// Anybody can send a link, so only the one spelling that the agent writes counts. Absent for
/// anything else, for a path with a NUL, and for one that is longer than the system's paths are.
std::optional<std::string> pathInLink(std::string_view link);

/// The place at the path, which names an entry of one of the folders by the folder's own path.
/// The file system is not asked. Absent for any other path.
std::optional<JobPlace> jobPlace(std::string_view path, std::span<const Platform::URL> folders);

} // namespace JobLink
