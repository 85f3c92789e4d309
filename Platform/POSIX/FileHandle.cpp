#include "Platform/FileHandle.h"

#include "Platform/POSIX/FileSystemPath.h"
#include "Platform/POSIX/OpenFile.h"
#include "Platform/POSIX/SystemError.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace Platform {
namespace {

// Above INT_MAX bytes, read(2) and write(2) of macOS fail with EINVAL.
constexpr std::size_t mostAtOnce = std::size_t{1} << 30;

Expected<FileHandle> openAt(const URL& url, int flags) {
    const auto path = fileSystemPath(url);
    if (!path)
        return Error{url.absoluteString() + ": names no file"};
    auto file = openWithoutWaiting(AT_FDCWD, path->c_str(), flags);
    if (file.fileDescriptor() < 0)
        return systemError(*path, errno);
    return file;
}

} // namespace

FileHandle openWithoutWaiting(int folder, const char* path, int flags) {
    constexpr mode_t modeWithinMask = 0666;
    return FileHandle(uninterrupted([&] {
        return openat(folder, path, flags | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, modeWithinMask);
    }));
}

Expected<FileHandle> FileHandle::openForReading(const URL& url) {
    return openAt(url, O_RDONLY);
}

Expected<FileHandle> FileHandle::openForWriting(const URL& url) {
    auto file = openAt(url, O_WRONLY | O_CREAT);
    if (!file)
        return file;
    // Emptied only once it is known what it is.
    if (file->kind() != Kind::regular)
        return Error{url.path() + ": not a file"};
    if (ftruncate(file->fileDescriptor(), 0) != 0)
        return systemError(url.path(), errno);
    return file;
}

FileHandle::FileHandle(FileHandle&& other) noexcept
    : fileDescriptor_(std::exchange(other.fileDescriptor_, -1)) {}

FileHandle& FileHandle::operator=(FileHandle&& other) noexcept {
    FileHandle taken(std::move(other));
    std::swap(fileDescriptor_, taken.fileDescriptor_);
    return *this;
}

FileHandle::~FileHandle() {
    close();
}

FileHandle::Status FileHandle::status() const {
    struct stat status{};
    if (fstat(fileDescriptor_, &status) != 0)
        return {};
    const auto size = static_cast<std::uint64_t>(status.st_size);
    if (S_ISREG(status.st_mode))
        return {.kind = Kind::regular, .size = size};
    return {.kind = S_ISDIR(status.st_mode) ? Kind::directory : Kind::other, .size = size};
}

bool FileHandle::rewind() {
    return lseek(fileDescriptor_, 0, SEEK_SET) == 0;
}

Expected<std::size_t> FileHandle::read(std::span<std::byte> buffer) {
    buffer = buffer.first(std::min(buffer.size(), mostAtOnce));
    const auto count =
        uninterrupted([&] { return ::read(fileDescriptor_, buffer.data(), buffer.size()); });
    if (count < 0)
        return systemError("cannot read", errno);
    return static_cast<std::size_t>(count);
}

std::optional<Error> FileHandle::write(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const auto piece = bytes.first(std::min(bytes.size(), mostAtOnce));
        const auto count =
            uninterrupted([&] { return ::write(fileDescriptor_, piece.data(), piece.size()); });
        if (count < 0)
            return systemError("cannot write", errno);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return std::nullopt;
}

std::optional<Error> FileHandle::close() {
    if (fileDescriptor_ < 0)
        return std::nullopt;
    // Never again after an error: the number may by then be another thread's file.
    if (::close(std::exchange(fileDescriptor_, -1)) != 0)
        return systemError("cannot close", errno);
    return std::nullopt;
}

} // namespace Platform
