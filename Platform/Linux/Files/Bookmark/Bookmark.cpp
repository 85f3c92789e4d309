#include "Platform/Bookmark.h"

#include "Platform/FileHandle.h"
#include "Platform/Linux/Files/Bookmark/BookmarkRecord.h"
#include "Platform/Linux/Files/Bookmark/FileIdentity.h"
#include "Platform/Linux/Files/Bookmark/MovedFileSearch.h"
#include "Platform/POSIX/FileSystemPath.h"
#include "Platform/POSIX/SystemError.h"

#include <fcntl.h>

#include <cerrno>
#include <optional>
#include <string>
#include <utility>

namespace Platform {
namespace {

/// Where the file of the record lies by now, and what is to be known of it from now on.
std::optional<BookmarkRecord> found(const BookmarkRecord& record) {
    const auto there = FileIdentity::at(record.path);
    if (there && there->isOfSameFileAs(record.identity))
        return BookmarkRecord{.path = record.path, .identity = *there};
    if (auto path = MovedFileSearch(record.identity).find(record.path))
        return BookmarkRecord{.path = std::move(*path), .identity = record.identity};
    if (there && there->isFolder == record.identity.isFolder)
        return BookmarkRecord{.path = record.path, .identity = *there};
    return std::nullopt;
}

URL urlOf(const BookmarkRecord& item) {
    return URL::file(item.path, item.identity.isFolder ? URL::DirectoryHint::isDirectory
                                                       : URL::DirectoryHint::notDirectory);
}

} // namespace

Expected<BookmarkData> makeBookmark(const URL& file) {
    auto path = fileSystemPath(file);
    if (!path)
        return Error{"not the URL of a file"};
    const auto identity = FileIdentity::at(*path);
    if (!identity)
        return systemError("cannot make a bookmark", errno);
    return BookmarkRecord{.path = std::move(*path), .identity = *identity}.write();
}

class SecurityScopedResource::Impl {
public:
    Impl(BookmarkRecord found, bool stale)
        : item(std::move(found))
        , url(urlOf(item))
        , isStale(stale) {}

    /// Another file may have come to the path since the look.
    bool isAt(int folder, const std::string& path) const {
        const auto there = FileIdentity::at(folder, path);
        return there && there->isOfSameFileAs(item.identity);
    }

    const BookmarkRecord item;
    const URL url;
    const bool isStale;
    std::optional<FileHandle> access;
};

Expected<SecurityScopedResource> SecurityScopedResource::resolve(const BookmarkData& bookmark) {
    const auto record = BookmarkRecord::read(bookmark);
    if (!record)
        return Error{"not a bookmark"};
    auto item = found(*record);
    if (!item)
        return Error{"the bookmark's file was not found"};
    const bool isStale = *item != *record;
    return SecurityScopedResource(std::make_unique<Impl>(std::move(*item), isStale));
}

SecurityScopedResource::SecurityScopedResource(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

SecurityScopedResource::SecurityScopedResource(SecurityScopedResource&& other) noexcept = default;
SecurityScopedResource&
SecurityScopedResource::operator=(SecurityScopedResource&& other) noexcept = default;
SecurityScopedResource::~SecurityScopedResource() = default;

const URL& SecurityScopedResource::url() const {
    return impl_->url;
}

bool SecurityScopedResource::isStale() const {
    return impl_->isStale;
}

bool SecurityScopedResource::startAccessing() {
    if (impl_->access)
        return true;
    FileHandle handle(open(impl_->item.path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    if (handle.fileDescriptor() < 0 || !impl_->isAt(handle.fileDescriptor(), ""))
        return false;
    impl_->access = std::move(handle);
    return true;
}

void SecurityScopedResource::stopAccessing() {
    impl_->access.reset();
}

Expected<BookmarkData> SecurityScopedResource::makeBookmark() const {
    if (!impl_->isAt(AT_FDCWD, impl_->item.path))
        return Error{"the file is gone"};
    return impl_->item.write();
}

} // namespace Platform
