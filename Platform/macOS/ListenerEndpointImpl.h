#pragma once

#include "Platform/ListenerEndpoint.h"

#import <Foundation/Foundation.h>

namespace Platform {

class ListenerEndpoint::Impl {
public:
    explicit Impl(NSXPCListenerEndpoint* endpoint)
        : endpoint_(endpoint) {}

    /// nil: nobody listens there.
    NSXPCListenerEndpoint* endpoint() const { return endpoint_; }

private:
    NSXPCListenerEndpoint* const endpoint_;
};

} // namespace Platform
