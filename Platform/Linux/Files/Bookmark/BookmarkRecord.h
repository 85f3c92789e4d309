#pragma once

#include "Platform/Bookmark.h"
#include "Platform/Linux/Files/Bookmark/FileIdentity.h"

#include <optional>
#include <string>

namespace Platform {

/// What a bookmark says here: where the file was, and by what it is known. As data, a dictionary in
/// the binary form of property lists.
struct BookmarkRecord {
    /// Absent when the bytes are no such dictionary, or the path is not absolute.
    static std::optional<BookmarkRecord> read(const BookmarkData& data);

    Expected<BookmarkData> write() const;

    friend bool operator==(const BookmarkRecord&, const BookmarkRecord&) = default;

    std::string path; ///< bytes, as the file system has them
    FileIdentity identity;
};

} // namespace Platform
