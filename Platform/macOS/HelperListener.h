#pragma once

#include "Platform/Native/NativeListener.h"
#include "Platform/macOS/HelperProtocol.h"

#include <memory>

namespace Platform {

/// Whom the calls of all clients are reported to, and how they are answered. Its operations may be
/// called on any thread.
class HelperCalls {
public:
    /// Answers on the client's connection; called once.
    using Answer = void (^)(id value, NSError* error);

    explicit HelperCalls(NativeListener::Events events);
    ~HelperCalls();
    HelperCalls(const HelperCalls&) = delete;
    HelperCalls& operator=(const HelperCalls&) = delete;
    HelperCalls(HelperCalls&&) = delete;
    HelperCalls& operator=(HelperCalls&&) = delete;

    void called(NSString* client, NSString* method, NSArray* arguments, Answer answer);
    void answer(std::uint64_t number, const CallAnswer& answer);
    void invalidated(const std::string& reason);

private:
    class Impl;

    const std::unique_ptr<Impl> impl_;
};

} // namespace Platform

/// Takes every client, and gives each of them an object to call.
@interface HelperListenerDelegate : NSObject <NSXPCListenerDelegate>
- (instancetype)initWithCalls:(std::shared_ptr<Platform::HelperCalls>)calls;
@end
