#include "Platform/FileManager.h"

#include "Platform/macOS/FoundationURL.h"
#include "Platform/macOS/Text.h"

#include <utility>

namespace Platform::FileManager {

std::vector<URL> localLibraryDirectories() {
    @autoreleasepool {
        std::vector<URL> folders;
        for (NSURL* folder in [NSFileManager.defaultManager URLsForDirectory:NSLibraryDirectory
                                                                   inDomains:NSLocalDomainMask])
            if (auto url = portableURL(folder))
                folders.push_back(std::move(*url));
        return folders;
    }
}

std::vector<URL> startupFolders() {
    return {};
}

std::string displayName(const URL& url) {
    @autoreleasepool {
        NSURL* const item = foundationURL(url);
        NSString* const path = item.isFileURL ? item.path : nil;
        return path == nil ? url.lastPathComponent()
                           : portableText([NSFileManager.defaultManager displayNameAtPath:path]);
    }
}

std::optional<URL> applicationSupportDirectory() {
    @autoreleasepool {
        for (NSURL* folder in
             [NSFileManager.defaultManager URLsForDirectory:NSApplicationSupportDirectory
                                                  inDomains:NSUserDomainMask])
            return portableURL(folder);
        return std::nullopt;
    }
}

std::string currentDirectoryPath() {
    @autoreleasepool {
        const auto path = portableText(NSFileManager.defaultManager.currentDirectoryPath);
        return path.empty() ? "/" : path; // a current folder that was removed has no path
    }
}

} // namespace Platform::FileManager
