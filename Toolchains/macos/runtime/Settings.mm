// The settings of a suite, for want of `initWithSuiteName:` and of the daemon that keeps settings:
// a file, where the other back end keeps it too, so that one trial serves both.
#import <Foundation/Foundation.h>
#include <pwd.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <thread>

@interface CorbelSuite : NSObject
@property(readonly) NSString* name;
@end

namespace {

NSString* folder() {
    const char* const given = std::getenv("XDG_CONFIG_HOME");
    NSString* const home =
        @(getpwuid(getuid())->pw_dir); // GNUstep asks for the name, of which there may be two
    NSString* const configuration =
        given != nullptr ? @(given) : [home stringByAppendingPathComponent:@".config"];
    return [configuration stringByAppendingPathComponent:@"tarnwell"];
}

} // namespace

/// All suites of this process. One lock for all; observers are notified outside it.
@interface CorbelSuites : NSObject
+ (CorbelSuites*)shared;
- (id)objectForKey:(NSString*)key of:(CorbelSuite*)suite;
- (void)set:(id)value forKey:(NSString*)key of:(CorbelSuite*)suite;
- (void)registerDefaults:(NSDictionary*)defaults;
- (void)open:(CorbelSuite*)suite;
- (NSDictionary*)storedIn:(NSString*)name;
- (NSDictionary*)registered;
@end

@implementation CorbelSuites {
    NSMutableDictionary<NSString*, NSDictionary*>* stored_;
    NSMutableDictionary* registered_;
    NSHashTable<CorbelSuite*>* open_;
    NSMutableSet<NSString*>* watched_;
}

+ (CorbelSuites*)shared {
    static CorbelSuites* const instance = [[CorbelSuites alloc] init];
    return instance;
}

- (instancetype)init {
    if ((self = [super init])) {
        stored_ = [NSMutableDictionary dictionary];
        registered_ = [NSMutableDictionary dictionary];
        open_ = [NSHashTable weakObjectsHashTable];
        watched_ = [NSMutableSet set];
    }
    return self;
}

- (NSString*)fileOf:(NSString*)name in:(NSString*)place {
    return [place stringByAppendingPathComponent:[name stringByAppendingString:@".plist"]];
}

- (NSDictionary*)read:(NSString*)name in:(NSString*)place {
    NSMutableData* const data = [NSMutableData dataWithContentsOfFile:[self fileOf:name in:place]];
    if (data.length > 6 &&
        std::memcmp(data.bytes, "<plist", 6) == 0) // GNUstep insists on a declaration
        [data replaceBytesInRange:NSMakeRange(0, 0) withBytes:"<?xml version=\"1.0\"?>" length:21];
    id const list = data == nil ? nil
                                : [NSPropertyListSerialization propertyListWithData:data
                                                                            options:0
                                                                             format:nil
                                                                              error:nil];
    return [list isKindOfClass:NSDictionary.class] ? list : @{};
}

// "The search list": the suite; "settings for all apps", which are always there, "after the entries
// for the search list's domain"; what is registered "as the final entry" (NSUserDefaults.h).
- (id)objectForKey:(NSString*)key of:(CorbelSuite*)suite {
    NSDictionary* const settingsForAll = @{@"AppleLanguages" : @[ @"en" ]};
    @synchronized(self) {
        for (NSDictionary* domain in @[ stored_[suite.name], settingsForAll, registered_ ])
            if (id const value = domain[key])
                return value;
        return nil;
    }
}

- (NSDictionary*)storedIn:(NSString*)name {
    @synchronized(self) {
        return [stored_[name] copy];
    }
}

- (NSDictionary*)registered {
    @synchronized(self) {
        return [registered_ copy];
    }
}

- (void)set:(id)value forKey:(NSString*)key of:(CorbelSuite*)suite {
    if (value != nil &&
        [NSPropertyListSerialization dataWithPropertyList:@[ value ]
                                                   format:NSPropertyListBinaryFormat_v1_0
                                                  options:0
                                                    error:nil] == nil)
        [NSException raise:NSInvalidArgumentException
                    format:@"Attempt to insert non-property list object for key %@", key];
    @synchronized(watched_) { // the file and what is stored are the same
        NSMutableDictionary* content = nil;
        @synchronized(self) {
            content = [stored_[suite.name] mutableCopy];
            content[key] = value;
        }
        NSData* const data =
            [NSPropertyListSerialization dataWithPropertyList:content
                                                       format:NSPropertyListXMLFormat_v1_0
                                                      options:0
                                                        error:nil];
        [data writeToFile:[self fileOf:suite.name in:folder()] atomically:YES];
        [self take:content of:suite.name];
    }
}

- (void)registerDefaults:(NSDictionary*)defaults {
    @synchronized(self) {
        [registered_ addEntriesFromDictionary:defaults];
    }
}

/// "You can use key-value observing to be notified of any updates to a particular default value",
/// whoever stored it (NSUserDefaults reference); on any thread.
- (void)take:(NSDictionary*)content of:(NSString*)name {
    NSMutableArray<CorbelSuite*>* const suites = [NSMutableArray array];
    NSMutableSet<NSString*>* const changed = [NSMutableSet set];
    @synchronized(self) {
        for (CorbelSuite* suite in open_.allObjects)
            if ([suite.name isEqual:name])
                [suites addObject:suite];
        NSDictionary* const before = stored_[name];
        for (NSString* key in [before.allKeys arrayByAddingObjectsFromArray:content.allKeys])
            if (![before[key] isEqual:content[key]])
                [changed addObject:key];
    }
    for (CorbelSuite* suite in suites)
        for (NSString* key in changed)
            [suite willChangeValueForKey:key];
    @synchronized(self) {
        stored_[name] = content;
    }
    for (CorbelSuite* suite in suites)
        for (NSString* key in changed)
            [suite didChangeValueForKey:key];
}

- (void)open:(CorbelSuite*)suite {
    @synchronized(self) {
        [open_ addObject:suite];
        if (stored_[suite.name] != nil)
            return;
        stored_[suite.name] = [self read:suite.name in:folder()];
        [self watch:folder()];
    }
}

- (void)watch:(NSString*)place {
    if ([watched_ containsObject:place] ||
        ![NSFileManager.defaultManager createDirectoryAtPath:place
                                 withIntermediateDirectories:YES
                                                  attributes:nil
                                                       error:nil])
        return;
    [watched_ addObject:place];
    const int descriptor = inotify_init1(IN_CLOEXEC);
    inotify_add_watch(descriptor, place.fileSystemRepresentation,
                      IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE);
    std::thread([self, place, descriptor] {
        for (std::array<char, 4096> events; read(descriptor, events.data(), events.size()) > 0;)
            [self lookAgainIn:place];
    }).detach();
}

- (void)lookAgainIn:(NSString*)place {
    @autoreleasepool {
        NSArray* names = nil;
        @synchronized(self) {
            names = stored_.allKeys;
        }
        @synchronized(watched_) {
            if ([place isEqual:folder()])
                for (NSString* name in names)
                    [self take:[self read:name in:place] of:name];
        }
    }
}

@end

@implementation CorbelSuite

- (instancetype)initWithName:(NSString*)name {
    if ((self = [super init])) {
        _name = [name copy];
        [CorbelSuites.shared open:self];
    }
    return self;
}

- (id)objectForKey:(NSString*)key {
    return [CorbelSuites.shared objectForKey:key of:self];
}

// "Retrieves only the keys and values from the specified domain."
- (NSDictionary*)persistentDomainForName:(NSString*)name {
    return [CorbelSuites.shared storedIn:name];
}

- (NSDictionary*)volatileDomainForName:(NSString*)name {
    return [name isEqual:NSRegistrationDomain] ? [CorbelSuites.shared registered] : nil;
}

- (id)valueForKey:(NSString*)key {
    return [self objectForKey:key];
}

- (void)setObject:(id)value forKey:(NSString*)key {
    [CorbelSuites.shared set:value forKey:key of:self];
}

- (void)removeObjectForKey:(NSString*)key {
    [CorbelSuites.shared set:nil forKey:key of:self];
}

- (void)registerDefaults:(NSDictionary*)defaults {
    [CorbelSuites.shared registerDefaults:defaults];
}

@end

@implementation NSUserDefaults (SystemFoundation)

// "If suitename matches the main bundle's identifier or the global domain's name, nil":
// NSUserDefaults.h.
- (instancetype)initWithSuiteName:(NSString*)name {
    if ([name isEqual:NSBundle.mainBundle.infoDictionary[@"CFBundleIdentifier"]] ||
        [name isEqual:NSGlobalDomain])
        return nil;
    return (NSUserDefaults*)(id)[[CorbelSuite alloc] initWithName:name];
}

@end
