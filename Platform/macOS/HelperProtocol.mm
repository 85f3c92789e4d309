#include "Platform/macOS/HelperProtocol.h"

namespace Platform {

NSXPCInterface* helperInterface() {
    NSXPCInterface* const interface =
        [NSXPCInterface interfaceWithProtocol:@protocol(HelperProtocol)];
    NSArray<Class>* const classes = @[
        NSArray.class, NSDictionary.class, NSString.class, NSNumber.class, NSData.class,
        NSDate.class
    ];
    NSSet<Class>* const set = [NSSet setWithArray:classes];
    const SEL selector = @selector(callMethod:arguments:reply:);
    [interface setClasses:set forSelector:selector argumentIndex:1 ofReply:NO];
    [interface setClasses:set forSelector:selector argumentIndex:0 ofReply:YES];
    return interface;
}

} // namespace Platform
