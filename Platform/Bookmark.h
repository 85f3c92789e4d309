#pragma once

#include "Platform/Expected.h"
#include "Platform/PropertyList.h"
#include "Platform/URL.h"

#include <memory>

namespace Platform {

/// What a bookmark of a file is outside this system: bytes to be kept, which only the system that
/// made them can read.
using BookmarkData = PropertyList::Data;

/// Makes a bookmark that carries the right to reach the file later. The file must exist; a symbolic
/// link at the end of the path counts as itself. Callable on any thread.
Expected<BookmarkData> makeBookmark(const URL& file);

/// A file that was found again from a bookmark, wherever it lies by now, and the right to reach it.
/// For one thread at a time.
class SecurityScopedResource {
public:
    /// Finds the file, also after it was moved or renamed within its file system. Where it is gone,
    /// or cannot be found at bounded cost, what is no folder at its old path counts as it, as after
    /// an editor that saves by putting a new file in place. Gives the reason where nothing does, or
    /// where the bytes are no bookmark. They may come from an attacker.
    static Expected<SecurityScopedResource> resolve(const BookmarkData& bookmark);

    SecurityScopedResource(SecurityScopedResource&& other) noexcept;
    SecurityScopedResource& operator=(SecurityScopedResource&& other) noexcept;
    SecurityScopedResource(const SecurityScopedResource&) = delete;
    SecurityScopedResource& operator=(const SecurityScopedResource&) = delete;
    /// Ends the access that was started.
    ~SecurityScopedResource();

    /// Where the file lay when it was found.
    const URL& url() const;

    /// Whether the bookmark still led to the file, but should be replaced by a fresh one.
    bool isStale() const;

    /// Makes the file reachable until `stopAccessing` or the end of the object; its permissions
    /// stay. False where it cannot be reached or is gone. A second start changes nothing.
    bool startAccessing();

    /// Does nothing where no access was started.
    void stopAccessing();

    /// A fresh bookmark of this same file.
    Expected<BookmarkData> makeBookmark() const;

private:
    class Impl;
    explicit SecurityScopedResource(std::unique_ptr<Impl> impl);

    std::unique_ptr<Impl> impl_;
};

} // namespace Platform
