#pragma once

#import <Foundation/Foundation.h>

/// The system's connection to a helper tool with a flag beside it. Known to the object runtime, so
/// that it can be made from there too.
@interface XPCConnection : NSXPCConnection

/// Whether a failure of this connection is to be presented to the user; NO when it is made. Not
/// synchronised.
@property(nonatomic) BOOL presentError;

@end
