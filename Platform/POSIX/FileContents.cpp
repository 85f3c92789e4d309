#include "Platform/FileContents.h"

#include "Platform/FileHandle.h"
#include "Platform/POSIX/FileSystemPath.h"
#include "Platform/POSIX/SystemError.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>

namespace Platform::FileContents {

Expected<std::vector<std::byte>> read(const URL& file, std::size_t largestSize) {
    constexpr std::size_t step = std::size_t{64} * 1024;
    auto handle = FileHandle::openForReading(file);
    if (!handle)
        return handle.error();
    if (handle->kind() != FileHandle::Kind::regular)
        return Error{file.path() + ": not a file"};
    std::vector<std::byte> bytes;
    for (;;) {
        const auto size = bytes.size();
        bytes.resize(size + step);
        const auto count = handle->read(std::span(bytes).subspan(size));
        if (!count)
            return Error{file.path() + ": " + count.error().description};
        if (size + *count > largestSize)
            return Error{file.path() + ": too large"};
        bytes.resize(size + *count);
        if (*count == 0)
            return bytes;
    }
}

std::optional<Error> write(const URL& file, std::span<const std::byte> bytes) {
    auto handle = FileHandle::openForWriting(file);
    if (!handle)
        return handle.error();
    auto error = handle->write(bytes);
    if (!error)
        error = handle->close();
    if (error)
        error->description = file.path() + ": " + error->description;
    return error;
}

Expected<bool> rename(const URL& file, const URL& newName) {
    constexpr mode_t privateFile = 0600;
    const auto from = fileSystemPath(file);
    const auto to = fileSystemPath(newName);
    if (!from || !to)
        return Error{"names no file"};
    // Nobody else can take the name from here on.
    const FileHandle place(open(to->c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, privateFile));
    if (place.fileDescriptor() < 0 && errno == EEXIST)
        return false;
    if (place.fileDescriptor() < 0)
        return systemError(*to, errno);
    if (::rename(from->c_str(), to->c_str()) == 0)
        return true;
    auto error = systemError(*from, errno);
    unlink(to->c_str());
    return error;
}

bool isMissing(const URL& file) {
    const auto path = fileSystemPath(file);
    struct stat status{};
    return path && stat(path->c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

} // namespace Platform::FileContents
