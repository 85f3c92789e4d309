#pragma once

#include "Platform/Linux/Files/Bookmark/FileIdentity.h"

#include <dirent.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <unordered_set>

namespace Platform {

/// Looks for a file that is no longer where it was: in its old folder, or in the nearest one above
/// that still exists, and from there outwards, down into subfolders and up towards the root. It
/// stays on the file's device and follows no links. For one look.
class MovedFileSearch {
public:
    /// Entries read in all. What lies farther away than that counts as gone.
    static constexpr std::size_t nearby = 50'000;

    explicit MovedFileSearch(const FileIdentity& wanted, std::size_t mostEntries = nearby)
        : wanted_(wanted)
        , mostEntries_(mostEntries) {}

    /// The file's path. Absent when it was not found.
    std::optional<std::string> find(const std::string& oldPath);

private:
    /// A tree that grows downwards, so that many long paths share their beginnings.
    struct Folder {
        const Folder* above; ///< null for one that is named by its whole path
        std::string name;
    };

    static std::string pathOf(const Folder& folder);

    std::optional<std::string> look(const Folder& folder);
    bool isNewHere(const std::string& folder);
    bool isWanted(const dirent& entry, int folder) const;

    const FileIdentity wanted_;
    const std::size_t mostEntries_;
    std::deque<Folder> folders_; ///< in the order of the visits
    std::unordered_set<std::uint64_t> visited_;
    std::size_t entriesRead_ = 0;
};

} // namespace Platform
