// Declarations of what this system uses of the framework, and of nothing else. Compared with the
// public metadata by the declaration checker; a build on a Mac uses the system's own headers.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <objc/NSObject.h>
#include <objc/objc.h>

#define NS_ENUM(type, name) CF_ENUM(type, name)
#define NS_OPTIONS(type, name) CF_OPTIONS(type, name)
#define FOUNDATION_EXPORT CF_EXPORT
#define NS_RETURNS_INNER_POINTER __attribute__((objc_returns_inner_pointer))

@class NSArray<__covariant T>, NSData, NSDictionary<__covariant K, __covariant V>, NSError, NSCoder,
    NSLocale;

typedef double NSTimeInterval;
typedef NSUInteger NSStringEncoding;
typedef NSString* NSKeyValueChangeKey;

typedef struct {
    unsigned long state;
    id __unsafe_unretained* itemsPtr;
    unsigned long* mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

@protocol NSCopying
- (id)copyWithZone:(struct _NSZone*)zone;
@end

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)len;
@end

enum : NSStringEncoding { NSUTF8StringEncoding = 4, NSISOLatin1StringEncoding = 5 };

typedef NS_ENUM(NSInteger, NSComparisonResult) {
    NSOrderedAscending = -1L,
    NSOrderedSame = 0,
    NSOrderedDescending = 1
};

@interface NSString : NSObject <NSCopying>
+ (instancetype)stringWithFormat:(NSString*)format, ... __attribute__((format(__NSString__, 1, 2)));
- (instancetype)initWithBytes:(const void*)bytes
                       length:(NSUInteger)len
                     encoding:(NSStringEncoding)encoding;
- (NSData*)dataUsingEncoding:(NSStringEncoding)encoding allowLossyConversion:(BOOL)lossy;
- (NSString*)capitalizedStringWithLocale:(NSLocale*)locale;
- (BOOL)isEqualToString:(NSString*)text;
- (NSComparisonResult)localizedStandardCompare:(NSString*)string;
+ (NSString*)localizedNameOfStringEncoding:(NSStringEncoding)encoding;
@property(class, readonly) const NSStringEncoding* availableStringEncodings;
@property(readonly) NSUInteger length;
@property(readonly, copy) NSString* lowercaseString;
@end

@interface NSData : NSObject <NSCopying>
+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length;
@property(readonly) NSUInteger length;
@property(readonly) const void* bytes NS_RETURNS_INNER_POINTER;
@end

@interface NSArray<__covariant T> : NSObject <NSCopying, NSFastEnumeration>
+ (instancetype)arrayWithObjects:(const T[])objects count:(NSUInteger)count;
@property(readonly) NSUInteger count;
@end

@interface NSMutableArray<T> : NSArray <T>
+ (instancetype)array;
- (void)addObject:(T)object;
@end

@interface NSDictionary<__covariant K, __covariant V> : NSObject <NSCopying, NSFastEnumeration>
- (V)objectForKeyedSubscript:(K)key;
+ (instancetype)dictionaryWithObjects:(const V[])objects
                              forKeys:(const K<NSCopying>[])keys
                                count:(NSUInteger)cnt;
@end

@interface NSMutableDictionary<K, V> : NSDictionary <K, V>
+ (instancetype)dictionary;
- (void)setObject:(V)object forKeyedSubscript:(id<NSCopying>)key;
- (void)removeAllObjects;
@end

@interface NSNull : NSObject <NSCopying>
+ (NSNull*)null;
@end

@interface NSValue : NSObject <NSCopying>
@property(readonly) const char* objCType NS_RETURNS_INNER_POINTER;
@end

@interface NSNumber : NSValue
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithDouble:(double)value;
+ (NSNumber*)numberWithLongLong:(long long)value;
+ (NSNumber*)numberWithUnsignedLongLong:(unsigned long long)value;
@property(readonly) BOOL boolValue;
@property(readonly) double doubleValue;
@property(readonly) long long longLongValue;
@property(readonly) unsigned long long unsignedLongLongValue;
@end

@interface NSSet<__covariant T> : NSObject <NSCopying, NSFastEnumeration>
+ (instancetype)setWithArray:(NSArray<T>*)array;
@end

FOUNDATION_EXPORT NSString* const NSLocalizedDescriptionKey;

@interface NSError : NSObject <NSCopying>
+ (instancetype)errorWithDomain:(NSString*)domain
                           code:(NSInteger)code
                       userInfo:(NSDictionary<NSString*, id>*)dict;
@property(readonly, copy) NSString* domain;
@property(readonly) NSInteger code;
@property(readonly, copy) NSString* localizedDescription;
@end

__attribute__((objc_exception))
@interface NSException : NSObject<NSCopying>
@property(readonly, copy) NSString* reason;
@end

typedef NSString* NSURLResourceKey;
typedef NS_OPTIONS(NSUInteger, NSURLBookmarkCreationOptions) {
    NSURLBookmarkCreationWithSecurityScope = 1UL << 11
};
typedef NS_OPTIONS(NSUInteger, NSURLBookmarkResolutionOptions) {
    NSURLBookmarkResolutionWithSecurityScope = 1UL << 10
};

@interface NSURL : NSObject <NSCopying>
+ (instancetype)URLWithString:(NSString*)text;
+ (instancetype)URLByResolvingBookmarkData:(NSData*)bookmarkData
                                   options:(NSURLBookmarkResolutionOptions)options
                             relativeToURL:(NSURL*)relativeURL
                       bookmarkDataIsStale:(BOOL*)isStale
                                     error:(out NSError**)error;
- (NSData*)bookmarkDataWithOptions:(NSURLBookmarkCreationOptions)options
    includingResourceValuesForKeys:(NSArray<NSURLResourceKey>*)keys
                     relativeToURL:(NSURL*)relativeURL
                             error:(out NSError**)error;
- (BOOL)startAccessingSecurityScopedResource;
- (void)stopAccessingSecurityScopedResource;
- (NSURL*)URLByAppendingPathComponent:(NSString*)component isDirectory:(BOOL)isDirectory;
@property(readonly, copy) NSString* absoluteString;
@property(readonly, getter=isFileURL) BOOL fileURL;
@property(readonly) BOOL hasDirectoryPath;
@property(readonly, copy) NSString* path;
@property(readonly) const char* fileSystemRepresentation NS_RETURNS_INNER_POINTER;
@end

@interface NSURLComponents : NSObject <NSCopying>
+ (instancetype)componentsWithString:(NSString*)text;
+ (instancetype)componentsWithString:(NSString*)text
           encodingInvalidCharacters:(BOOL)encodingInvalidCharacters
    __attribute__((availability(macos, introduced = 14.0)));
@property(copy) NSString* scheme;
@end

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
+ (instancetype)bundleWithURL:(NSURL*)url;
- (NSURL*)URLForResource:(NSString*)name withExtension:(NSString*)ext;
- (NSString*)localizedStringForKey:(NSString*)key value:(NSString*)value table:(NSString*)table;
@property(readonly, copy) NSURL* bundleURL;
@property(readonly, copy) NSDictionary<NSString*, id>* infoDictionary;
@property(readonly, copy) NSArray<NSString*>* localizations;
@end

@interface NSLocale : NSObject <NSCopying>
@property(class, readonly, copy) NSArray<NSString*>* preferredLanguages;
@property(class, readonly, copy) NSLocale* currentLocale;
@end

@interface NSDate : NSObject <NSCopying>
+ (instancetype)dateWithTimeIntervalSince1970:(NSTimeInterval)secs;
@property(readonly) NSTimeInterval timeIntervalSince1970;
@end

@interface NSTimeZone : NSObject <NSCopying>
@property(class, readonly, copy) NSTimeZone* localTimeZone;
@end

typedef NSString* NSCalendarIdentifier;
FOUNDATION_EXPORT const NSCalendarIdentifier NSCalendarIdentifierGregorian;

typedef NS_OPTIONS(NSUInteger, NSCalendarUnit) {
    NSCalendarUnitEra = 2,
    NSCalendarUnitYear = 4,
    NSCalendarUnitMonth = 8,
    NSCalendarUnitDay = 16,
    NSCalendarUnitHour = 32,
    NSCalendarUnitMinute = 64,
    NSCalendarUnitSecond = 128,
    NSCalendarUnitWeekday = 512
};

@interface NSDateComponents : NSObject <NSCopying>
@property NSInteger era;
@property NSInteger year;
@property NSInteger month;
@property NSInteger day;
@property NSInteger hour;
@property NSInteger minute;
@property NSInteger second;
@property NSInteger weekday;
@end

@interface NSCalendar : NSObject <NSCopying>
+ (instancetype)calendarWithIdentifier:(NSCalendarIdentifier)calendarIdentifierConstant;
- (NSDateComponents*)components:(NSCalendarUnit)unitFlags fromDate:(NSDate*)date;
@property(copy) NSTimeZone* timeZone;
@end

typedef NS_ENUM(NSUInteger, NSSearchPathDirectory) {
    NSLibraryDirectory = 5,
    NSApplicationSupportDirectory = 14
};
typedef NS_OPTIONS(NSUInteger, NSSearchPathDomainMask) {
    NSUserDomainMask = 1,
    NSLocalDomainMask = 2
};

typedef NS_OPTIONS(NSUInteger, NSDirectoryEnumerationOptions) {
    NSDirectoryEnumerationSkipsHiddenFiles = 1UL << 2
};

@interface NSFileManager : NSObject
- (NSArray<NSURL*>*)contentsOfDirectoryAtURL:(NSURL*)url
                  includingPropertiesForKeys:(NSArray<NSURLResourceKey>*)keys
                                     options:(NSDirectoryEnumerationOptions)mask
                                       error:(NSError**)error;
@property(class, readonly, strong) NSFileManager* defaultManager;
- (NSArray<NSURL*>*)URLsForDirectory:(NSSearchPathDirectory)directory
                           inDomains:(NSSearchPathDomainMask)domains;
- (NSString*)displayNameAtPath:(NSString*)path;
@property(readonly, copy) NSString* currentDirectoryPath;
@end

typedef NS_OPTIONS(uint64_t, NSActivityOptions) {
    NSActivityUserInitiated = 0x00FFFFFFULL,
    NSActivityUserInitiatedAllowingIdleSystemSleep = 0x00EFFFFFULL
};

@interface NSProcessInfo : NSObject
@property(class, readonly, strong) NSProcessInfo* processInfo;
@property(readonly, copy) NSString* processName;
- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason;
- (void)endActivity:(id<NSObject>)activity;
@end

typedef NS_ENUM(NSUInteger, NSPropertyListFormat) { NSPropertyListBinaryFormat_v1_0 = 200 };
typedef NS_OPTIONS(NSUInteger, NSPropertyListMutabilityOptions) { NSPropertyListImmutable = 0 };
typedef NSPropertyListMutabilityOptions NSPropertyListReadOptions;
typedef NSUInteger NSPropertyListWriteOptions;

@interface NSPropertyListSerialization : NSObject
+ (NSData*)dataWithPropertyList:(id)plist
                         format:(NSPropertyListFormat)format
                        options:(NSPropertyListWriteOptions)options
                          error:(out NSError**)error;
+ (id)propertyListWithData:(NSData*)data
                   options:(NSPropertyListReadOptions)options
                    format:(NSPropertyListFormat*)format
                     error:(out NSError**)error;
@end

typedef NS_OPTIONS(NSUInteger, NSKeyValueObservingOptions) { NSKeyValueObservingOptionNew = 1 };

@interface NSObject (NSThreadPerformAdditions)
- (void)performSelectorOnMainThread:(SEL)aSelector withObject:(id)arg waitUntilDone:(BOOL)wait;
@end

@interface NSObject (NSKeyValueObserving)
- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context;
@end

@interface NSObject (NSKeyValueObserverRegistration)
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(void*)context;
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath context:(void*)context;
@end

@interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (instancetype)initWithSuiteName:(NSString*)suiteName;
- (id)objectForKey:(NSString*)key;
- (void)setObject:(id)value forKey:(NSString*)key;
- (void)removeObjectForKey:(NSString*)key;
- (void)registerDefaults:(NSDictionary<NSString*, id>*)defaults;
- (NSDictionary<NSString*, id>*)persistentDomainForName:(NSString*)domainName;
- (NSDictionary<NSString*, id>*)volatileDomainForName:(NSString*)domainName;
@end

FOUNDATION_EXPORT NSString* const NSRegistrationDomain;

enum : NSInteger {
    NSXPCConnectionInterrupted = 4097,
    NSXPCConnectionInvalid = 4099,
    NSXPCConnectionCodeSigningRequirementFailure
    __attribute__((availability(macos, introduced = 13.0))) = 4102
};

typedef NS_OPTIONS(NSUInteger, NSXPCConnectionOptions) { NSXPCConnectionPrivileged = 1UL << 12 };

@protocol NSXPCProxyCreating
- (id)remoteObjectProxyWithErrorHandler:(void (^)(NSError* error))handler;
@end

@interface NSXPCListenerEndpoint : NSObject
@end

@interface NSXPCInterface : NSObject
+ (NSXPCInterface*)interfaceWithProtocol:(Protocol*)protocol;
- (void)setClasses:(NSSet<Class>*)classes
       forSelector:(SEL)sel
     argumentIndex:(NSUInteger)arg
           ofReply:(BOOL)ofReply;
@end

@interface NSXPCConnection : NSObject <NSXPCProxyCreating>
- (instancetype)initWithServiceName:(NSString*)serviceName;
- (instancetype)initWithMachServiceName:(NSString*)name options:(NSXPCConnectionOptions)options;
- (instancetype)initWithListenerEndpoint:(NSXPCListenerEndpoint*)endpoint;
- (void)resume;
- (void)invalidate;
@property(strong) NSXPCInterface* remoteObjectInterface;
@property(strong) NSXPCInterface* exportedInterface;
@property(strong) id exportedObject;
@property(copy) void (^interruptionHandler)(void);
@property(copy) void (^invalidationHandler)(void);
@end

@class NSXPCListener;

@protocol NSXPCListenerDelegate <NSObject>
@optional
- (BOOL)listener:(NSXPCListener*)listener shouldAcceptNewConnection:(NSXPCConnection*)newConnection;
@end

@interface NSXPCListener : NSObject
- (instancetype)initWithMachServiceName:(NSString*)name;
@property(weak) id<NSXPCListenerDelegate> delegate;
- (void)resume;
- (void)invalidate;
@end

@interface NSNotification : NSObject <NSCopying>
@end

@interface NSNotificationCenter : NSObject
@property(class, readonly, strong) NSNotificationCenter* defaultCenter;
- (void)postNotificationName:(NSString*)name object:(id)object;
@end

@interface NSObject (NSKeyValueCoding)
- (id)valueForKey:(NSString*)key;
@end

FOUNDATION_EXPORT Class NSClassFromString(NSString* aClassName);
FOUNDATION_EXPORT SEL NSSelectorFromString(NSString* aSelectorName);
FOUNDATION_EXPORT NSString* NSStringFromSelector(SEL aSelector);
FOUNDATION_EXPORT void NSLog(NSString* format, ...) __attribute__((format(__NSString__, 1, 2)));
