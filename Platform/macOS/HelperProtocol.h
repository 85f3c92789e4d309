#pragma once

#import <Foundation/Foundation.h>

/// What a helper tool exports: one operation for all its methods. Arguments and value are objects
/// of property lists. The reply is called once, with a value (nil where the method has none to
/// give) or with an error, in which the helper says in its own words why it refused.
@protocol HelperProtocol
- (void)callMethod:(NSString*)method
         arguments:(NSArray*)arguments
             reply:(void (^)(id value, NSError* error))reply;
@end

namespace Platform {

/// The protocol, with what its arguments and values may hold.
NSXPCInterface* helperInterface();

} // namespace Platform
