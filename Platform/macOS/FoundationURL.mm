#include "Platform/macOS/FoundationURL.h"

#include "Platform/macOS/Text.h"

namespace Platform {

NSURL* foundationURL(const URL& url) {
    return [NSURL URLWithString:foundationText(url.absoluteString())];
}

std::optional<URL> portableURL(NSURL* url) {
    if (!url.isFileURL)
        return URL::parse(portableText(url.absoluteString));
    const char* const path = url.fileSystemRepresentation;
    if (path == nullptr)
        return std::nullopt;
    return URL::file(path, url.hasDirectoryPath ? URL::DirectoryHint::isDirectory
                                                : URL::DirectoryHint::notDirectory);
}

} // namespace Platform
