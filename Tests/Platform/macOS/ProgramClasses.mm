#import <Foundation/Foundation.h>

// Classes as any program may have them: it links only as long as the platform has none of their
// names.

@interface AppDelegate : NSObject
@end

@implementation AppDelegate
@end

@interface MonitorFolders : NSObject
@end

@implementation MonitorFolders
@end

@interface NotificationDelegate : NSObject
@end

@implementation NotificationDelegate
@end

@interface ResourceBundleClass : NSObject
@end

@implementation ResourceBundleClass
@end
