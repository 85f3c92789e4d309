#include "Platform/FileContents.h"
#include "Platform/FileHandle.h"
#include "Platform/POSIX/FileSystemPath.h"
#include "Platform/POSIX/SystemError.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>
#include <utility>

namespace Platform::FileContents {
namespace {

constexpr mode_t modeWithinMask = 0666;
constexpr mode_t privateMode = 0600;
constexpr int openFlags = O_WRONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;

/// What a path of links leads to, be it there or not; a chain without end is left to the system.
std::string followed(const std::string& path) {
    constexpr int longestChain = 40;
    std::filesystem::path place = path;
    for (int link = 0; link < longestChain; ++link) {
        std::error_code failure;
        const auto target = std::filesystem::read_symlink(place, failure);
        if (failure)
            return place;
        place = place.parent_path() / target;
    }
    return path;
}

/// Hidden from the user, who has named nothing like this.
std::string beside(const std::filesystem::path& file) {
    return file.parent_path() / ("." + file.filename().string() + ".saving");
}

struct Access {
    mode_t mode;
    uid_t owner;
    gid_t group;
};

/// What a file that is there says of itself; the error of a file that may not be written.
Expected<std::optional<Access>> existing(const std::string& path) {
    const FileHandle file(uninterrupted([&] { return open(path.c_str(), openFlags); }));
    if (file.fileDescriptor() < 0 && errno == ENOENT)
        return std::optional<Access>();
    if (file.fileDescriptor() < 0)
        return systemError(path, errno);
    struct stat status{};
    if (fstat(file.fileDescriptor(), &status) != 0)
        return systemError(path, errno);
    if (!S_ISREG(status.st_mode))
        return Error{path + ": not a file"};
    return std::optional(Access{.mode = static_cast<mode_t>(status.st_mode & 07777U),
                                .owner = status.st_uid,
                                .group = status.st_gid});
}

bool isStillAt(const FileHandle& file, const std::string& path) {
    struct stat held{};
    struct stat there{};
    return fstat(file.fileDescriptor(), &held) == 0 && lstat(path.c_str(), &there) == 0 &&
           held.st_dev == there.st_dev && held.st_ino == there.st_ino;
}

/// The file that is to take the place of another, held against all who are about to do the same.
class Successor {
public:
    /// Waits for the others. Otherwise an `errno` value.
    static Expected<FileHandle, int> open(const std::string& path, mode_t mode) {
        for (;;) {
            FileHandle file(uninterrupted(
                [&] { return ::open(path.c_str(), openFlags | O_CREAT | O_NOFOLLOW, mode); }));
            if (file.fileDescriptor() < 0)
                return errno;
            // A file system without locks has none for the others, either.
            static_cast<void>(uninterrupted([&] { return flock(file.fileDescriptor(), LOCK_EX); }));
            // The one before may have moved this file, or removed it, in the meantime.
            if (isStillAt(file, path))
                return file;
        }
    }

    Successor(FileHandle file, std::string path)
        : file_(std::move(file))
        , path_(std::move(path)) {}

    ~Successor() {
        if (!isPlaced_)
            unlink(path_.c_str());
    }

    Successor(const Successor&) = delete;
    Successor& operator=(const Successor&) = delete;
    Successor(Successor&&) = delete;
    Successor& operator=(Successor&&) = delete;

    std::optional<Error> fill(std::span<const std::byte> bytes,
                              const std::optional<Access>& access) {
        const int descriptor = file_.fileDescriptor();
        // Left by a process that came to a sudden end.
        if (ftruncate(descriptor, 0) != 0)
            return systemError("cannot write", errno);
        if (access) {
            // As far as we may: another's file is better ours than lost.
            static_cast<void>(!fchown(descriptor, access->owner, access->group));
            if (fchmod(descriptor, access->mode) != 0)
                return systemError("cannot set permissions", errno);
        }
        if (auto error = file_.write(bytes))
            return error;
        // Not every file system can be asked to bring a file to the disk.
        if (uninterrupted([&] { return fsync(descriptor); }) != 0 && errno != EINVAL)
            return systemError("cannot write", errno);
        return std::nullopt;
    }

    std::optional<Error> takePlaceOf(const std::string& path) {
        if (::rename(path_.c_str(), path.c_str()) != 0)
            return systemError("cannot replace", errno);
        isPlaced_ = true;
        return std::nullopt;
    }

private:
    FileHandle file_;
    std::string path_;
    bool isPlaced_ = false;
};

bool takesNoOtherFile(int code) {
    constexpr std::array codes{EACCES, EPERM, EROFS, ENAMETOOLONG};
    return std::ranges::find(codes, code) != codes.end();
}

std::optional<Error> naming(const std::string& path, std::optional<Error> error) {
    if (error)
        error->description = path + ": " + error->description;
    return error;
}

} // namespace

std::optional<Error> replace(const URL& file, std::span<const std::byte> bytes,
                             const MakeRoom& makeRoom, NewFile newFile) {
    const auto path = fileSystemPath(file);
    if (!path)
        return Error{file.absoluteString() + ": names no file"};
    const auto place = followed(*path);
    const auto before = existing(place);
    if (!before)
        return before.error();
    auto access = *before;
    if (!access && newFile == NewFile::forUserAlone)
        access = Access{.mode = privateMode, .owner = geteuid(), .group = getegid()};
    const auto makeRoomThere = [&] {
        return makeRoom ? makeRoom(URL::file(place, URL::DirectoryHint::notDirectory))
                        : std::nullopt;
    };
    const auto besidePlace = beside(place);
    auto handle = Successor::open(besidePlace, access ? access->mode : modeWithinMask);
    if (!handle && !takesNoOtherFile(handle.error()))
        return systemError(place, handle.error());
    if (!handle) {
        auto error = makeRoomThere();
        return error ? error : write(file, bytes);
    }
    Successor successor(std::move(*handle), besidePlace);
    if (auto error = naming(place, successor.fill(bytes, access)))
        return error;
    if (auto error = makeRoomThere())
        return error;
    return naming(place, successor.takePlaceOf(place));
}

} // namespace Platform::FileContents
