#pragma once

#include "Platform/Bookmark.h"
#include "Platform/URL.h"
#include "Platform/UUID.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>

namespace CorbelKit {

/// A file or folder that the user once chose, kept reachable across launches by a bookmark in the
/// application's own settings. The file is accessible as long as the object lives.
///
/// Made and destroyed on the thread that uses it. Two objects of one file are different objects. No
/// failure is shown to the user.
class SecureURL {
public:
    /// The file whose bookmark stands under the key. A bookmark that is out of date is replaced
    /// there by a fresh one; that this fails is logged. Null
    /// - where nothing or anything but data stands under the key, which is then removed;
    /// - where the file is not found: the bookmark stays, for it may be found at a later launch;
    /// - where the fresh bookmark cannot be made.
    static std::unique_ptr<SecureURL> fromSettings(std::string_view key);

    /// Null where the file is not found.
    static std::unique_ptr<SecureURL> fromBookmark(const Platform::BookmarkData& bookmark);

    /// Stores a bookmark of the file under the key. False where none can be made, or stored, which
    /// is logged; the settings stay as they are.
    static bool save(const Platform::URL& file, std::string_view key);

    /// Starts the access. For the functions above.
    explicit SecureURL(Platform::SecurityScopedResource resource);

    /// Ends the access.
    ~SecureURL();
    SecureURL(const SecureURL&) = delete;
    SecureURL& operator=(const SecureURL&) = delete;
    SecureURL(SecureURL&&) = delete;
    SecureURL& operator=(SecureURL&&) = delete;

    /// Where the file lay when it was found.
    const Platform::URL& url() const { return resource_.url(); }

    /// Made at random with the object.
    const Platform::UUID& identifier() const { return identifier_; }

    /// Whether both are the same object.
    friend bool operator==(const SecureURL& one, const SecureURL& other) {
        return one.identifier_ == other.identifier_;
    }

private:
    Platform::SecurityScopedResource resource_;
    const Platform::UUID identifier_ = Platform::UUID::random();
};

} // namespace CorbelKit

template <>
struct std::hash<CorbelKit::SecureURL> {
    std::size_t operator()(const CorbelKit::SecureURL& url) const noexcept {
        return std::hash<Platform::UUID>()(url.identifier());
    }
};
