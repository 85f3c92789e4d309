// What the system's Foundation does beyond GNUstep's, or in another way.
#import <Foundation/Foundation.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

@implementation NSURL (SystemFoundation)

// "The C string ... will be automatically freed when the receiver is autoreleased": NSURL
// reference. NULL where the URL has no path of a file.
- (const char*)fileSystemRepresentation {
    return self.isFileURL ? self.path.fileSystemRepresentation : nullptr;
}

- (BOOL)hasDirectoryPath {
    return [self.absoluteString hasSuffix:@"/"];
}

// Without a sandbox a bookmark is a way to find the file again: the path, and the file's identity.
- (NSData*)bookmarkDataWithOptions:(NSURLBookmarkCreationOptions)options
    includingResourceValuesForKeys:(NSArray*)keys
                     relativeToURL:(NSURL*)relativeURL
                             error:(NSError**)error {
    struct stat status{};
    if (!self.isFileURL || lstat(self.fileSystemRepresentation, &status) != 0) {
        if (error != nullptr) // NSFileReadNoSuchFileError, as the system has it for a missing file
            *error = [NSError errorWithDomain:NSCocoaErrorDomain code:260 userInfo:@{}];
        return nil;
    }
    return [NSPropertyListSerialization dataWithPropertyList:@{
        @"path" : self.path,
        @"file" : @(static_cast<unsigned long long>(status.st_ino)),
        @"isFolder" : @(S_ISDIR(status.st_mode) != 0)
    }
                                                      format:NSPropertyListBinaryFormat_v1_0
                                                     options:0
                                                       error:error];
}

// "If YES, the bookmark data is stale ... create a new bookmark": it leads to the file, which lies
// elsewhere.
+ (instancetype)URLByResolvingBookmarkData:(NSData*)bookmarkData
                                   options:(NSURLBookmarkResolutionOptions)options
                             relativeToURL:(NSURL*)relativeURL
                       bookmarkDataIsStale:(BOOL*)isStale
                                     error:(NSError**)error {
    NSDictionary* const record = [NSPropertyListSerialization propertyListWithData:bookmarkData
                                                                           options:0
                                                                            format:nil
                                                                             error:nil];
    NSString* const path = [record isKindOfClass:NSDictionary.class] ? record[@"path"] : nil;
    NSString* found = nil;
    struct stat status{};
    const auto isTheFile = [&](NSString* candidate) {
        return lstat(candidate.fileSystemRepresentation, &status) == 0 &&
               status.st_ino == [record[@"file"] unsignedLongLongValue];
    };
    if (path != nil && isTheFile(path))
        found = path;
    NSString* const folder = path.stringByDeletingLastPathComponent;
    if (path != nil && found == nil) {
        for (NSString* name in [NSFileManager.defaultManager contentsOfDirectoryAtPath:folder
                                                                                 error:nil])
            if (isTheFile([folder stringByAppendingPathComponent:name]))
                found = [folder stringByAppendingPathComponent:name];
    }
    if (path != nil && found == nil && lstat(path.fileSystemRepresentation, &status) == 0 &&
        !S_ISDIR(status.st_mode))
        found = path;
    if (found == nil) {
        if (error != nullptr)
            *error = [NSError errorWithDomain:NSCocoaErrorDomain
                                         code:path == nil ? 259 : 4
                                     userInfo:@{}];
        return nil;
    }
    *isStale = ![found isEqual:path];
    return [NSURL fileURLWithPath:found isDirectory:[record[@"isFolder"] boolValue]];
}

// Outside a sandbox there is no right to be had and none to be given back.
- (BOOL)startAccessingSecurityScopedResource {
    return access(self.fileSystemRepresentation, F_OK) == 0;
}

- (void)stopAccessingSecurityScopedResource {
}

@end

@implementation NSString (SystemFoundation)

- (NSString*)capitalizedStringWithLocale:(NSLocale*)locale {
    return self.capitalizedString;
}

@end

/// The folders of macOS: NSPathUtilities.h, hier(7).
@interface NSFileManager (SystemFoundation)
@end

@implementation NSFileManager (SystemFoundation)

- (NSArray*)URLsForDirectory:(NSSearchPathDirectory)directory
                   inDomains:(NSSearchPathDomainMask)domains {
    const char* const library =
        std::getenv("CORBEL_LOCAL_LIBRARY"); // stands in for /Library in trials
    NSString* const root =
        domains == NSUserDomainMask
            ? [@(getpwuid(getuid())->pw_dir) stringByAppendingPathComponent:@"Library"]
            : @(library == nullptr ? "/Library" : library);
    NSString* const path = directory == NSApplicationSupportDirectory
                               ? [root stringByAppendingPathComponent:@"Application Support"]
                               : root;
    return @[ [NSURL fileURLWithPath:path isDirectory:YES] ];
}

@end
