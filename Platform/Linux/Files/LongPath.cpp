#include "Platform/Linux/Files/LongPath.h"

#include <fcntl.h>

#include <climits>
#include <string>

namespace Platform {

FileHandle openLongPath(std::string_view path, int flags) {
    FileHandle stage(AT_FDCWD);
    while (path.size() >= PATH_MAX) {
        const auto cut = path.rfind('/', PATH_MAX - 1);
        const std::string part(path.substr(0, cut));
        stage = FileHandle(openat(stage.fileDescriptor(), part.c_str(),
                                  O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (stage.fileDescriptor() == -1)
            return stage;
        path.remove_prefix(cut + 1);
    }
    return FileHandle(openat(stage.fileDescriptor(), std::string(path).c_str(), flags | O_CLOEXEC));
}

} // namespace Platform
