// Declarations as they should be; the tests seed one fault at a time.
#import <objc/NSObject.h>
#import <stdbool.h>
#import <stdint.h>
typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double NSTimeInterval;
typedef struct _NSZone NSZone;
@class NSArray, NSDate, NSDictionary, NSError, NSSet;
@interface NSString : NSObject
@property(readonly) NSUInteger length;
- (BOOL)hasPrefix:(NSString*)string;
@end
@interface NSValue : NSObject
@end
@interface NSNumber : NSValue
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithDouble:(double)value;
@property(readonly) NSInteger integerValue;
@end
@interface NSDate : NSObject
- (NSTimeInterval)timeIntervalSinceDate:(NSDate*)date;
@end
@interface NSUserDefaults : NSObject
- (instancetype)initWithSuiteName:(NSString*)suite;
- (void)setObject:(id)value forKey:(NSString*)key;
@end
@interface NSFileManager : NSObject
- (BOOL)removeItemAtPath:(NSString*)path error:(NSError**)error;
@end
typedef enum UNAuthorizationOptions : NSUInteger {
    UNAuthorizationOptionBadge = 1,
    UNAuthorizationOptionAlert = 4,
} UNAuthorizationOptions;
@interface UNUserNotificationCenter : NSObject
+ (UNUserNotificationCenter*)currentNotificationCenter;
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError* error))completionHandler;
- (void)removePendingNotificationRequestsWithIdentifiers:(NSArray*)identifiers;
@end
@protocol UNUserNotificationCenterDelegate <NSObject>
- (void)userNotificationCenter:(UNUserNotificationCenter*)center openSettingsForNotification:(id)notification;
@end
extern NSString* const NSCocoaErrorDomain;
extern NSString* NSHomeDirectoryForUser(NSString* userName);
