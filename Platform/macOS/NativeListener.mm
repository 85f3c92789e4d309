#include "Platform/Native/NativeListener.h"

#include "Platform/macOS/HelperListener.h"
#include "Platform/macOS/Text.h"

#include <dispatch/dispatch.h>

#include <utility>

namespace Platform {

class NativeListener::Impl {
public:
    Impl(const MachServiceName& service, Events events)
        : calls_(std::make_shared<HelperCalls>(std::move(events)))
        , delegate_([[HelperListenerDelegate alloc] initWithCalls:calls_]) {
        NSString* const name = foundationText(service.name);
        if (name.length == 0) {
            const auto calls = calls_;
            dispatch_async(dispatch_get_global_queue(QOS_CLASS_DEFAULT, 0), ^{
                calls->invalidated("no service can have such a name");
            });
            return;
        }
        listener_ = [[NSXPCListener alloc] initWithMachServiceName:name];
        listener_.delegate = delegate_;
        [listener_ resume];
    }

    ~Impl() {
        @autoreleasepool {
            listener_.delegate = nil;
            [listener_ invalidate];
        }
    }

    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

    HelperCalls& calls() const { return *calls_; }

private:
    const std::shared_ptr<HelperCalls> calls_;
    HelperListenerDelegate* const delegate_; // which the listener holds weakly
    NSXPCListener* listener_ = nil;          // nil: none can be
};

NativeListener::NativeListener(const MachServiceName& service, Events events)
    : impl_([&] {
        @autoreleasepool {
            return std::make_unique<Impl>(service, std::move(events));
        }
    }()) {}

NativeListener::~NativeListener() = default;

void NativeListener::answer(std::uint64_t number, CallAnswer answer) {
    @autoreleasepool {
        impl_->calls().answer(number, answer);
    }
}

} // namespace Platform
