#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace Platform {

/// What stays with a file when it is renamed or moved within its file system. A plain value.
struct FileIdentity {
    /// Since the Unix epoch, as statx(2) gives it.
    struct BirthTime {
        std::int64_t seconds = 0;
        std::uint32_t nanoseconds = 0;
        friend bool operator==(const BirthTime&, const BirthTime&) = default;
    };

    /// Of the item at the path itself, be it a link. A relative path is taken from the open folder;
    /// the empty one means the open item. Absent where there is none; `errno` then says why.
    static std::optional<FileIdentity> at(int folder, const std::string& path);
    static std::optional<FileIdentity> at(const std::string& absolutePath);

    /// Whether both are of one file. A device may have another number after the next start of the
    /// system, and numbers of files are used again, so a birth time counts more than the device.
    bool isOfSameFileAs(const FileIdentity& other) const;

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;

    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::optional<BirthTime> birthTime; ///< absent where the file system keeps none
    bool isFolder = false;
};

} // namespace Platform
