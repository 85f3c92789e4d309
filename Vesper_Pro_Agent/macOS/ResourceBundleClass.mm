#import <Foundation/Foundation.h>

/// Stands for the program's own resources where they are looked up by class.
@interface ResourceBundleClass : NSObject
@end

@implementation ResourceBundleClass
@end
