#pragma once

#include "Platform/Expected.h"
#include "Platform/FileHandle.h"
#include "Platform/URL.h"

#include <functional>
#include <optional>
#include <string_view>

namespace Platform {

/// An open folder, whose files are opened by their names. What was listed and what is opened is of
/// the same folder, though another may have taken its place at the path by then; and the system
/// need not follow the path for each. Operations are callable on several threads at once.
class FolderHandle {
public:
    /// Fails where there is no folder at the path, or none that may be read. A symbolic link counts
    /// as what it leads to.
    static Expected<FolderHandle> open(const URL& folder);

    /// Hands over the names of the immediate entries, as bytes, hidden ones included, "." and ".."
    /// not, in the order in which the file system gives them. Gives the reason where the folder
    /// cannot be listed; some may have been handed over by then.
    std::optional<Error> forEachName(const std::function<void(std::string_view name)>& visit) const;

    /// As `FileHandle::openForReading` does, of the entry with the name. Fails for what can be the
    /// name of none.
    Expected<FileHandle> openForReading(std::string_view name) const;

private:
    explicit FolderHandle(FileHandle folder)
        : folder_(std::move(folder)) {}

    FileHandle folder_;
};

} // namespace Platform
