#pragma once

#include "Platform/FileHandle.h"
#include "Platform/POSIX/FolderListing.h"

#include <optional>
#include <string>
#include <vector>

namespace Platform {

/// Goes depth first over the subfolders of open folders, with a list in place of a stack of calls:
/// each subfolder is named, and gone into only if it is entered. Keeps few folders open, whatever
/// the depth.
class FolderWalk {
public:
    /// What is, or may be, a subfolder: file systems need not say.
    struct Subfolder {
        int parent;
        int parentDescriptor; ///< -1 where the parent is not open any more
        std::string name;
    };

    /// Goes on with the subfolders of the folder, which is open for reading.
    void enter(int folder, FileHandle handle);

    /// Absent when there are no more.
    std::optional<Subfolder> next();

    /// Passes over what is left of the parent of the last subfolder.
    void leave() { levels_.pop_back(); }

    /// A folder that was not read to its end, and the `errno` value of why.
    struct Failure {
        int folder;
        int code;
    };

    /// So far.
    const std::vector<Failure>& failures() const { return failures_; }

private:
    struct Level {
        int folder;
        std::optional<FolderListing> listing; // absent once the rest of it is in `names`
        std::vector<std::string> names;
    };

    std::optional<std::string> nextName(Level& level);
    void close(Level& level);

    std::vector<Level> levels_;
    std::vector<Failure> failures_;
};

} // namespace Platform
