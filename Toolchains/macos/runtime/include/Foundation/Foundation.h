// GNUstep's Foundation, and what the system's declares beyond it.
#pragma once
#include <CoreFoundation/CoreFoundation.h>
#include_next <Foundation/Foundation.h>

typedef NSString* NSURLResourceKey;
typedef NSUInteger NSURLBookmarkCreationOptions;
enum : NSUInteger { NSURLBookmarkCreationWithSecurityScope = 1UL << 11 };

@interface NSURL (SystemFoundation)
+ (instancetype)URLByResolvingBookmarkData:(NSData*)bookmarkData
                                   options:(NSURLBookmarkResolutionOptions)options
                             relativeToURL:(NSURL*)relativeURL
                       bookmarkDataIsStale:(BOOL*)isStale
                                     error:(NSError**)error;
- (NSData*)bookmarkDataWithOptions:(NSURLBookmarkCreationOptions)options
    includingResourceValuesForKeys:(NSArray*)keys
                     relativeToURL:(NSURL*)relativeURL
                             error:(NSError**)error;
- (BOOL)startAccessingSecurityScopedResource;
- (void)stopAccessingSecurityScopedResource;
@property(readonly) const char* fileSystemRepresentation;
@property(readonly) BOOL hasDirectoryPath;
@end

@interface NSString (SystemFoundation)
- (NSString*)capitalizedStringWithLocale:(NSLocale*)locale;
@end

enum : NSInteger { NSXPCConnectionCodeSigningRequirementFailure = 4102 };

@interface NSXPCConnection (Exports)
- (void)setExportedInterface:(NSXPCInterface*)interface;
- (void)setExportedObject:(id)object;
@end

@interface NSUserDefaults (SystemFoundation)
- (instancetype)initWithSuiteName:(NSString*)suiteName;
@end
