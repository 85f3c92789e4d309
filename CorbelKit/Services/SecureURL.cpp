#include "CorbelKit/Services/SecureURL.h"

#include "Platform/Log.h"
#include "Platform/UserDefaults.h"

#include <utility>

namespace CorbelKit {

using Platform::SecurityScopedResource;

namespace {

bool store(Platform::Expected<Platform::BookmarkData> bookmark, std::string_view key) {
    if (bookmark && !Platform::UserDefaults::standard().set(key, std::move(*bookmark)))
        return true;
    Platform::log("Couldn't save secure bookmark to defaults");
    return false;
}

} // namespace

std::unique_ptr<SecureURL> SecureURL::fromSettings(std::string_view key) {
    auto& settings = Platform::UserDefaults::standard();
    const auto bookmark = settings.data(key);
    if (!bookmark) {
        settings.remove(key);
        return nullptr;
    }
    auto found = fromBookmark(*bookmark);
    if (!found || !found->resource_.isStale())
        return found;
    auto fresh = found->resource_.makeBookmark();
    if (!fresh)
        return nullptr;
    store(std::move(fresh), key);
    return found;
}

std::unique_ptr<SecureURL> SecureURL::fromBookmark(const Platform::BookmarkData& bookmark) {
    auto resource = SecurityScopedResource::resolve(bookmark);
    if (!resource)
        return nullptr;
    return std::make_unique<SecureURL>(std::move(*resource));
}

bool SecureURL::save(const Platform::URL& file, std::string_view key) {
    return store(Platform::makeBookmark(file), key);
}

SecureURL::SecureURL(SecurityScopedResource resource)
    : resource_(std::move(resource)) {
    // Where access is refused, the URL may still be good to show.
    resource_.startAccessing();
}

SecureURL::~SecureURL() {
    resource_.stopAccessing();
}

} // namespace CorbelKit
