#include "Platform/POSIX/FolderListing.h"

#include <cerrno>
#include <string_view>

namespace Platform {

FolderListing::FolderListing(FileHandle folder)
    : fileDescriptor_(folder.fileDescriptor())
    , stream_(fileDescriptor_ == -1 ? nullptr : fdopendir(fileDescriptor_)) {
    if (stream_) {
        folder.release();
    } else {
        failure_ = errno;
    }
}

const dirent* FolderListing::next() {
    while (stream_ && failure_ == 0) {
        errno = 0;
        const auto* const entry = readdir(stream_.get());
        if (entry == nullptr) {
            failure_ = errno;
            return nullptr;
        }
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            return entry;
    }
    return nullptr;
}

} // namespace Platform
