#include "Platform/Bookmark.h"

#include "Platform/macOS/FoundationURL.h"
#include "Platform/macOS/Text.h"

#include <utility>

namespace Platform {
namespace {

Error portableError(NSError* error) {
    return {lineOf(error)};
}

Expected<BookmarkData> bookmarkOf(NSURL* url) {
    NSError* error = nil;
    NSData* const data = [url bookmarkDataWithOptions:NSURLBookmarkCreationWithSecurityScope
                       includingResourceValuesForKeys:nil
                                        relativeToURL:nil
                                                error:&error];
    if (data == nil)
        return portableError(error);
    const auto* const bytes = static_cast<const std::byte*>(data.bytes);
    return BookmarkData(bytes, bytes + data.length);
}

} // namespace

Expected<BookmarkData> makeBookmark(const URL& file) {
    @autoreleasepool {
        NSURL* const url = foundationURL(file);
        if (!url.isFileURL)
            return Error{"not the URL of a file"};
        return bookmarkOf(url);
    }
}

/// The right belongs to the very object that came from the bookmark, not to others of the same URL.
class SecurityScopedResource::Impl {
public:
    Impl(NSURL* resolved, URL portable, bool stale)
        : object(resolved)
        , url(std::move(portable))
        , isStale(stale) {}

    ~Impl() { stopAccessing(); }

    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

    void startAccessing() {
        if (!isAccessing)
            isAccessing = [object startAccessingSecurityScopedResource];
    }

    // The system counts: a stop too many would end the access of others.
    void stopAccessing() {
        if (std::exchange(isAccessing, false))
            [object stopAccessingSecurityScopedResource];
    }

    NSURL* const object;
    const URL url;
    const bool isStale;
    bool isAccessing = false;
};

Expected<SecurityScopedResource> SecurityScopedResource::resolve(const BookmarkData& bookmark) {
    @autoreleasepool {
        NSError* error = nil;
        BOOL isStale = NO;
        NSURL* const object = [NSURL
            URLByResolvingBookmarkData:[NSData dataWithBytes:bookmark.data() length:bookmark.size()]
                               options:NSURLBookmarkResolutionWithSecurityScope
                         relativeToURL:nil
                   bookmarkDataIsStale:&isStale
                                 error:&error];
        if (object == nil)
            return portableError(error);
        auto url = portableURL(object);
        if (!url)
            return Error{"the bookmark's file has no path"};
        return SecurityScopedResource(
            std::make_unique<Impl>(object, std::move(*url), isStale == YES));
    }
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
    @autoreleasepool {
        impl_->startAccessing();
        return impl_->isAccessing;
    }
}

void SecurityScopedResource::stopAccessing() {
    @autoreleasepool {
        impl_->stopAccessing();
    }
}

Expected<BookmarkData> SecurityScopedResource::makeBookmark() const {
    @autoreleasepool {
        return bookmarkOf(impl_->object);
    }
}

} // namespace Platform
