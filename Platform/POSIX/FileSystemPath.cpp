#include "Platform/POSIX/FileSystemPath.h"

#include <climits>

namespace Platform {

std::optional<std::string> fileSystemPath(const URL& url) {
    if (!url.isFileURL())
        return std::nullopt;
    auto path = url.path();
    if (!path.starts_with('/') || path.find('\0') != std::string::npos)
        return std::nullopt;
    return path;
}

bool canNameFile(std::string_view name, std::string_view suffix) {
    return !name.empty() && name != "." && name != ".." &&
           name.size() + suffix.size() <= NAME_MAX && name.find('/') == std::string_view::npos &&
           name.find('\0') == std::string_view::npos;
}

} // namespace Platform
