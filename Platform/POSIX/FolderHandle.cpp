#include "Platform/FolderHandle.h"

#include "Platform/POSIX/FileSystemPath.h"
#include "Platform/POSIX/FolderListing.h"
#include "Platform/POSIX/OpenFile.h"
#include "Platform/POSIX/SystemError.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <string>

namespace Platform {
namespace {

constexpr int folderToRead = O_RDONLY | O_DIRECTORY;

// Longer than any system's: a name of 255 units of UTF-16 has at most 765 bytes.
constexpr std::size_t longestName = 1023;

bool canNameEntry(std::string_view name) {
    using namespace std::string_view_literals;
    return !name.empty() && name != "." && name != ".." && name.size() <= longestName &&
           name.find_first_of("/\0"sv) == std::string_view::npos;
}

} // namespace

Expected<FolderHandle> FolderHandle::open(const URL& folder) {
    const auto path = fileSystemPath(folder);
    if (!path)
        return Error{folder.absoluteString() + ": names no folder"};
    auto handle = openWithoutWaiting(AT_FDCWD, path->c_str(), folderToRead);
    if (handle.fileDescriptor() < 0)
        return systemError(*path, errno);
    return FolderHandle(std::move(handle));
}

std::optional<Error>
FolderHandle::forEachName(const std::function<void(std::string_view name)>& visit) const {
    // Opened anew, for a place of its own among the entries.
    FolderListing listing(openWithoutWaiting(folder_.fileDescriptor(), ".", folderToRead));
    while (const auto* entry = listing.next())
        visit(entry->d_name);
    if (listing.failure() != 0)
        return systemError("cannot list the folder", listing.failure());
    return std::nullopt;
}

Expected<FileHandle> FolderHandle::openForReading(std::string_view name) const {
    if (!canNameEntry(name))
        return systemError(std::string(name), ENOENT);
    std::array<char, longestName + 1> terminated{};
    name.copy(terminated.data(), longestName);
    auto file = openWithoutWaiting(folder_.fileDescriptor(), terminated.data(), O_RDONLY);
    if (file.fileDescriptor() < 0)
        return systemError(std::string(name), errno);
    return file;
}

} // namespace Platform
