#include "Platform/macOS/XPCConnection.h"

@implementation XPCConnection

@synthesize presentError = presentError_;

- (instancetype)init {
    presentError_ = NO;
    return [super init];
}

- (instancetype)initWithServiceName:(NSString*)serviceName {
    presentError_ = NO;
    return [super initWithServiceName:serviceName];
}

- (instancetype)initWithMachServiceName:(NSString*)name options:(NSXPCConnectionOptions)options {
    presentError_ = NO;
    return [super initWithMachServiceName:name options:options];
}

- (instancetype)initWithListenerEndpoint:(NSXPCListenerEndpoint*)endpoint {
    presentError_ = NO;
    return [super initWithListenerEndpoint:endpoint];
}

@end
