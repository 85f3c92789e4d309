#include "Platform/POSIX/FileSystemPath.h"

namespace Platform {

std::optional<std::string> fileSystemPath(const URL& url) {
    if (!url.isFileURL())
        return std::nullopt;
    auto path = url.path();
    if (!path.starts_with('/') || path.find('\0') != std::string::npos)
        return std::nullopt;
    return path;
}

} // namespace Platform
