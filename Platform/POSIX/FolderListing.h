#pragma once

#include "Platform/FileHandle.h"

#include <dirent.h>

#include <memory>

namespace Platform {

/// The entries of an open folder, "." and ".." not, in the order in which the file system gives
/// them. Half a listing would pass for the removal of the other half: ask for the failure.
class FolderListing {
public:
    /// Of a handle without a descriptor `errno` says why: that is the listing's failure.
    explicit FolderListing(FileHandle folder);

    /// Good until the next one; null at the end.
    const dirent* next();

    /// The `errno` value of what ended the listing early; 0 for none.
    int failure() const { return failure_; }

    /// To look closer at the present entry from.
    int fileDescriptor() const { return fileDescriptor_; }

private:
    struct Close {
        void operator()(DIR* folder) const { closedir(folder); }
    };

    const int fileDescriptor_; // the stream's
    std::unique_ptr<DIR, Close> stream_;
    int failure_ = 0;
};

} // namespace Platform
