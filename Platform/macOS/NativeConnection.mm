#include "Platform/Native/NativeConnection.h"

#include "Platform/macOS/Boundary.h"
#include "Platform/macOS/HelperProtocol.h"
#include "Platform/macOS/ListenerEndpointImpl.h"
#include "Platform/macOS/PropertyListObjects.h"
#include "Platform/macOS/Text.h"
#include "Platform/macOS/XPCConnection.h"

#include <dispatch/dispatch.h>

#include <utility>

namespace Platform {
namespace {

using Kind = ConnectionError::Kind;
using Options = MachServiceName::Options;
static_assert(static_cast<NSXPCConnectionOptions>(Options::privileged) ==
              NSXPCConnectionPrivileged);

XPCConnection* make(std::monostate) {
    return nil;
}

XPCConnection* make(const ServiceName& service) {
    NSString* const name = foundationText(service.name);
    return name == nil ? nil : [[XPCConnection alloc] initWithServiceName:name];
}

XPCConnection* make(const MachServiceName& service) {
    NSString* const name = foundationText(service.name);
    const auto options = static_cast<NSXPCConnectionOptions>(service.options);
    return name == nil ? nil : [[XPCConnection alloc] initWithMachServiceName:name options:options];
}

XPCConnection* make(const ListenerEndpoint& endpoint) {
    NSXPCListenerEndpoint* const object = endpoint.impl().endpoint();
    return object == nil ? nil : [[XPCConnection alloc] initWithListenerEndpoint:object];
}

XPCConnection* makeFor(const ConnectionAddress& address) {
    @try {
        return std::visit([](const auto& kind) { return make(kind); }, address);
    } @catch (NSException*) { // a name that the system does not take
        return nil;
    }
}

ConnectionReply portableReply(id value, NSError* refusal) {
    if (refusal != nil)
        return ConnectionError{Kind::refused, lineOf(refusal), portableText(refusal.domain)};
    if (value == nil)
        return PropertyList();
    auto portable = portableValue(value);
    if (!portable)
        return ConnectionError{Kind::badReply, "an answer that is no property list"};
    return std::move(*portable);
}

Kind kindOf(NSError* error) {
    switch (error.code) {
    case NSXPCConnectionInterrupted:
        return Kind::interrupted;
    case NSXPCConnectionInvalid:
    case NSXPCConnectionCodeSigningRequirementFailure:
        return Kind::invalidated;
    default: // that the answer does not decode is reported in several ways
        return Kind::badReply;
    }
}

} // namespace

class NativeConnection::Impl {
public:
    Impl(const ConnectionAddress& address, Events events)
        : connection_(makeFor(address))
        , events_(std::make_shared<const Events>(std::move(events))) {
        const auto observer = events_;
        void (^const invalidated)(void) = ^{
            runAtBoundary(
                [&] { observer->invalidated("the connection to the helper is invalid"); });
        };
        if (connection_ == nil) {
            dispatch_async(queue_, invalidated);
            return;
        }
        connection_.remoteObjectInterface = helperInterface();
        connection_.invalidationHandler = invalidated;
        connection_.interruptionHandler = ^{
            runAtBoundary([&] { observer->interrupted("the helper went away"); });
        };
        [connection_ resume];
    }

    ~Impl() {
        @autoreleasepool {
            [connection_ invalidate];
        }
    }

    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

    /// Later: whether the system reports a failure before it returns, it does not say.
    void call(std::uint64_t number, NSString* method, NSArray* arguments) {
        XPCConnection* const connection = connection_;
        const auto observer = events_;
        dispatch_async(queue_, ^{
            const id<HelperProtocol> helper =
                [connection remoteObjectProxyWithErrorHandler:^(NSError* error) {
                    runAtBoundary([&] {
                        observer->replied(number, ConnectionError{kindOf(error), lineOf(error)});
                    });
                }];
            [helper callMethod:method
                     arguments:arguments
                         reply:^(id value, NSError* refusal) {
                             runAtBoundary(
                                 [&] { observer->replied(number, portableReply(value, refusal)); });
                         }];
        });
    }

    void refuse(std::uint64_t number) {
        const auto observer = events_;
        dispatch_async(queue_, ^{
            runAtBoundary([&] {
                observer->replied(
                    number, ConnectionError{Kind::badCall, "arguments that are no property list"});
            });
        });
    }

private:
    const dispatch_queue_t queue_ =
        dispatch_queue_create("com.tarnwell.NativeConnection", DISPATCH_QUEUE_SERIAL);
    XPCConnection* const connection_; // nil: leads nowhere
    const std::shared_ptr<const Events> events_;
};

NativeConnection::NativeConnection(const ConnectionAddress& address, Events events)
    : impl_([&] {
        @autoreleasepool {
            return std::make_unique<Impl>(address, std::move(events));
        }
    }()) {}

NativeConnection::~NativeConnection() = default;

void NativeConnection::call(std::uint64_t number, std::string method, PropertyList::Array arguments,
                            CallLimit /*limit*/) {
    @autoreleasepool {
        const id objects = foundationObject(PropertyList(std::move(arguments)));
        if ([objects isKindOfClass:NSArray.class])
            impl_->call(number, foundationText(method), objects);
        else
            impl_->refuse(number);
    }
}

} // namespace Platform
