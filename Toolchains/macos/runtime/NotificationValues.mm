// The values of notifications, which are copied when they are handed over and refuse what the
// system refuses.
#import <UserNotifications/UserNotifications.h>

namespace {

void require(id value) {
    if (value == nil)
        [NSException raise:NSInvalidArgumentException format:@"nil"];
}

} // namespace

// Values that nobody changes are their own copies.
#define VALUE                                                                                      \
    -(id)copyWithZone : (NSZone*)zone {                                                            \
        return self;                                                                               \
    }

@implementation UNNotificationAction {
    NSString *identifier_, *title_;
}
VALUE

+ (instancetype)actionWithIdentifier:(NSString*)identifier
                               title:(NSString*)title
                             options:(UNNotificationActionOptions)options {
    require(identifier);
    require(title);
    UNNotificationAction* const action = [[self alloc] init];
    action->identifier_ = [identifier copy];
    action->title_ = [title copy];
    return action;
}

- (NSString*)identifier {
    return identifier_;
}

- (NSString*)title {
    return title_;
}

@end

@implementation UNNotificationCategory {
    NSString* identifier_;
    NSArray *actions_, *intentIdentifiers_;
}
VALUE

+ (instancetype)categoryWithIdentifier:(NSString*)identifier
                               actions:(NSArray*)actions
                     intentIdentifiers:(NSArray*)intentIdentifiers
                               options:(UNNotificationCategoryOptions)options {
    require(identifier);
    UNNotificationCategory* const category = [[self alloc] init];
    category->identifier_ = [identifier copy];
    category->actions_ = [actions copy];
    category->intentIdentifiers_ = [intentIdentifiers copy];
    return category;
}

- (NSString*)identifier {
    return identifier_;
}

- (NSArray*)actions {
    return actions_;
}

- (NSArray*)intentIdentifiers {
    return intentIdentifiers_;
}

@end

@implementation UNNotificationContent {
@public
    NSString *title_, *subtitle_, *body_, *categoryIdentifier_;
}
VALUE

- (NSString*)title {
    return title_ == nil ? @"" : title_;
}

- (NSString*)subtitle {
    return subtitle_ == nil ? @"" : subtitle_;
}

- (NSString*)body {
    return body_ == nil ? @"" : body_;
}

- (NSString*)categoryIdentifier {
    return categoryIdentifier_ == nil ? @"" : categoryIdentifier_;
}

@end

// The texts are not nullable: UNNotificationContent.h.
@implementation UNMutableNotificationContent
@dynamic title, subtitle, body, categoryIdentifier;

- (void)setTitle:(NSString*)title {
    require(title);
    title_ = [title copy];
}

- (void)setSubtitle:(NSString*)subtitle {
    require(subtitle);
    subtitle_ = [subtitle copy];
}

- (void)setBody:(NSString*)body {
    require(body);
    body_ = [body copy];
}

- (void)setCategoryIdentifier:(NSString*)identifier {
    require(identifier);
    categoryIdentifier_ = [identifier copy];
}

- (id)copyWithZone:(NSZone*)zone {
    UNNotificationContent* const copy = [[UNNotificationContent alloc] init];
    copy->title_ = title_;
    copy->subtitle_ = subtitle_;
    copy->body_ = body_;
    copy->categoryIdentifier_ = categoryIdentifier_;
    return copy;
}

@end

@implementation UNNotificationTrigger
VALUE
@end

@implementation UNTimeIntervalNotificationTrigger {
    NSTimeInterval timeInterval_;
}

// "This value must be greater than zero", or: "time interval must be greater than 0".
+ (instancetype)triggerWithTimeInterval:(NSTimeInterval)timeInterval repeats:(BOOL)repeats {
    if (!(timeInterval > 0))
        [NSException raise:NSInternalInconsistencyException
                    format:@"time interval must be greater than 0"];
    UNTimeIntervalNotificationTrigger* const trigger = [[self alloc] init];
    trigger->timeInterval_ = timeInterval;
    return trigger;
}

- (NSTimeInterval)timeInterval {
    return timeInterval_;
}

@end

@implementation UNNotificationRequest {
    NSString* identifier_;
    UNNotificationContent* content_;
    UNNotificationTrigger* trigger_;
}
VALUE

+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(UNNotificationTrigger*)trigger {
    require(identifier);
    require(content);
    UNNotificationRequest* const request = [[self alloc] init];
    request->identifier_ = [identifier copy];
    request->content_ = [content copy];
    request->trigger_ = [trigger copy];
    return request;
}

- (NSString*)identifier {
    return identifier_;
}

- (UNNotificationContent*)content {
    return content_;
}

- (UNNotificationTrigger*)trigger {
    return trigger_;
}

@end
