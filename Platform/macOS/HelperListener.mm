#include "Platform/macOS/HelperListener.h"

#include "Platform/Mutex.h"
#include "Platform/macOS/Boundary.h"
#include "Platform/macOS/PropertyListObjects.h"
#include "Platform/macOS/Text.h"

#include <map>
#include <utility>

namespace Platform {
namespace {

NSError* errorOf(const CallRefusal& refusal) {
    NSString* const domain = foundationText(refusal.name);
    NSString* const words = foundationText(refusal.description);
    NSDictionary* const details = words == nil ? @{} : @{NSLocalizedDescriptionKey : words};
    return [NSError errorWithDomain:domain == nil ? @"" : domain code:1 userInfo:details];
}

} // namespace

class HelperCalls::Impl {
public:
    explicit Impl(NativeListener::Events events)
        : events(std::move(events)) {}

    std::uint64_t keep(Answer answer) {
        const MutexLock lock(mutex_);
        const auto number = ++lastNumber_;
        answers_.emplace(number, answer);
        return number;
    }

    /// nil where it was answered.
    Answer take(std::uint64_t number) {
        const MutexLock lock(mutex_);
        const auto found = answers_.extract(number);
        if (!found)
            return nil;
        return found.mapped();
    }

    const NativeListener::Events events;

private:
    Mutex mutex_;
    std::uint64_t lastNumber_ CORBEL_GUARDED_BY(mutex_) = 0;
    std::map<std::uint64_t, Answer> answers_ CORBEL_GUARDED_BY(mutex_);
};

HelperCalls::HelperCalls(NativeListener::Events events)
    : impl_(std::make_unique<Impl>(std::move(events))) {}

HelperCalls::~HelperCalls() = default;

void HelperCalls::called(NSString* client, NSString* method, NSArray* arguments, Answer answer) {
    auto values = portableValue(arguments);
    auto* const array = values ? std::get_if<PropertyList::Array>(&values->value()) : nullptr;
    if (array == nullptr) {
        answer(nil, errorOf({.name = CallRefusal::Name::badCall,
                             .description = "arguments that are no property list"}));
        return;
    }
    const auto number = impl_->keep(answer);
    impl_->events.called(number, portableText(client),
                         {.method = portableText(method), .arguments = std::move(*array)});
}

void HelperCalls::answer(std::uint64_t number, const CallAnswer& answer) {
    const Answer waiting = impl_->take(number);
    if (waiting == nil)
        return;
    if (!answer)
        waiting(nil, errorOf(answer.error()));
    else if (answer->get<PropertyList::Null>() != nullptr)
        waiting(nil, nil);
    else
        waiting(foundationObject(*answer), nil);
}

void HelperCalls::invalidated(const std::string& reason) {
    impl_->events.invalidated(reason);
}

} // namespace Platform

/// What one client calls.
@interface HelperExport : NSObject <HelperProtocol>
- (instancetype)initWithClient:(NSString*)client
                         calls:(std::shared_ptr<Platform::HelperCalls>)calls;
@end

@implementation HelperExport {
    NSString* client_;
    std::shared_ptr<Platform::HelperCalls> calls_;
}

- (instancetype)initWithClient:(NSString*)client
                         calls:(std::shared_ptr<Platform::HelperCalls>)calls {
    self = [super init];
    client_ = client;
    calls_ = std::move(calls);
    return self;
}

- (void)callMethod:(NSString*)method
         arguments:(NSArray*)arguments
             reply:(void (^)(id value, NSError* error))reply {
    Platform::runAtBoundary([&] { calls_->called(client_, method, arguments, reply); });
}

@end

@implementation HelperListenerDelegate {
    std::shared_ptr<Platform::HelperCalls> calls_;
    NSUInteger clients_; // of the listener's own queue
}

- (instancetype)initWithCalls:(std::shared_ptr<Platform::HelperCalls>)calls {
    self = [super init];
    calls_ = std::move(calls);
    return self;
}

- (BOOL)listener:(NSXPCListener*)listener
    shouldAcceptNewConnection:(NSXPCConnection*)newConnection {
    NSString* const client = Platform::foundationText(std::to_string(++clients_));
    [newConnection setExportedInterface:Platform::helperInterface()];
    [newConnection setExportedObject:[[HelperExport alloc] initWithClient:client calls:calls_]];
    [newConnection resume];
    return YES;
}

@end
