// Declarations of what this system uses of the framework, and of nothing else. Compared with the
// public metadata by the declaration checker; a build on a Mac uses the system's own headers.
#pragma once

#include <Foundation/Foundation.h>

typedef NS_OPTIONS(NSUInteger, UNAuthorizationOptions) {
    UNAuthorizationOptionBadge = 1 << 0,
    UNAuthorizationOptionSound = 1 << 1,
    UNAuthorizationOptionAlert = 1 << 2
};
typedef NS_ENUM(NSInteger, UNAuthorizationStatus) {
    UNAuthorizationStatusNotDetermined = 0,
    UNAuthorizationStatusDenied = 1,
    UNAuthorizationStatusAuthorized = 2,
    UNAuthorizationStatusProvisional = 3
};
typedef NS_ENUM(NSInteger, UNNotificationSetting) {
    UNNotificationSettingNotSupported = 0,
    UNNotificationSettingDisabled = 1,
    UNNotificationSettingEnabled = 2
};
typedef NS_OPTIONS(NSUInteger, UNNotificationActionOptions) {
    UNNotificationActionOptionDestructive = 1 << 1
};
typedef NS_OPTIONS(NSUInteger, UNNotificationCategoryOptions) {
    UNNotificationCategoryOptionCustomDismissAction = 1 << 0
};

@interface UNNotificationAction : NSObject <NSCopying>
+ (instancetype)actionWithIdentifier:(NSString*)identifier
                               title:(NSString*)title
                             options:(UNNotificationActionOptions)options;
@property(readonly, copy) NSString* identifier;
@property(readonly, copy) NSString* title;
@end

@interface UNNotificationCategory : NSObject <NSCopying>
+ (instancetype)categoryWithIdentifier:(NSString*)identifier
                               actions:(NSArray<UNNotificationAction*>*)actions
                     intentIdentifiers:(NSArray<NSString*>*)intentIdentifiers
                               options:(UNNotificationCategoryOptions)options;
@property(readonly, copy) NSString* identifier;
@property(readonly, copy) NSArray<UNNotificationAction*>* actions;
@property(readonly, copy) NSArray<NSString*>* intentIdentifiers;
@end

@interface UNNotificationContent : NSObject <NSCopying>
@property(readonly, copy) NSString* title;
@property(readonly, copy) NSString* subtitle;
@property(readonly, copy) NSString* body;
@property(readonly, copy) NSString* categoryIdentifier;
@end

@interface UNMutableNotificationContent : UNNotificationContent
@property(copy) NSString* title;
@property(copy) NSString* subtitle;
@property(copy) NSString* body;
@property(copy) NSString* categoryIdentifier;
@end

@interface UNNotificationTrigger : NSObject <NSCopying>
@end

@interface UNTimeIntervalNotificationTrigger : UNNotificationTrigger
+ (instancetype)triggerWithTimeInterval:(NSTimeInterval)timeInterval repeats:(BOOL)repeats;
@property(readonly) NSTimeInterval timeInterval;
@end

@interface UNNotificationRequest : NSObject <NSCopying>
+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(UNNotificationTrigger*)trigger;
@property(readonly, copy) NSString* identifier;
@property(readonly, copy) UNNotificationContent* content;
@property(readonly, copy) UNNotificationTrigger* trigger;
@end

@interface UNNotification : NSObject <NSCopying>
@property(readonly, copy) UNNotificationRequest* request;
@end

@interface UNNotificationResponse : NSObject <NSCopying>
@property(readonly, copy) UNNotification* notification;
@property(readonly, copy) NSString* actionIdentifier;
@end

@interface UNNotificationSettings : NSObject <NSCopying>
@property(readonly) UNAuthorizationStatus authorizationStatus;
@property(readonly) UNNotificationSetting alertSetting;
@end

@class UNUserNotificationCenter;

@protocol UNUserNotificationCenterDelegate <NSObject>
@optional
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler;
@end

@interface UNUserNotificationCenter : NSObject
@property(weak) id<UNUserNotificationCenterDelegate> delegate;
+ (UNUserNotificationCenter*)currentNotificationCenter;
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError* error))completionHandler;
- (void)setNotificationCategories:(NSSet<UNNotificationCategory*>*)categories;
- (void)getNotificationSettingsWithCompletionHandler:
    (void (^)(UNNotificationSettings* settings))completionHandler;
- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(void (^)(NSError* error))completionHandler;
@end
