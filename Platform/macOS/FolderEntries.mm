#include "Platform/FileManager.h"
#include "Platform/macOS/FoundationURL.h"
#include "Platform/macOS/Text.h"

#include <filesystem>

namespace Platform::FileManager {

std::optional<Error>
forEachEntry(const std::string& folder, ListingOptions options,
             const std::function<void(std::string_view name, bool isFolder)>& visit) {
    @autoreleasepool {
        NSURL* const url = foundationURL(URL::file(folder, URL::DirectoryHint::isDirectory));
        if (url == nil)
            return Error{folder + ": names no folder"};
        NSError* error = nil;
        NSArray<NSURL*>* const entries = [NSFileManager.defaultManager
              contentsOfDirectoryAtURL:url
            includingPropertiesForKeys:@[]
                               options:static_cast<NSDirectoryEnumerationOptions>(options)
                                 error:&error];
        if (entries == nil)
            return Error{lineOf(error)};
        for (NSURL* entry in entries) {
            if (const char* const path = entry.fileSystemRepresentation)
                visit(std::filesystem::path(path).filename().native(), entry.hasDirectoryPath);
        }
        return std::nullopt;
    }
}

} // namespace Platform::FileManager
