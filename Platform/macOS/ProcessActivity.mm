#include "Platform/ProcessActivity.h"

#include "Platform/macOS/Text.h"

#include <utility>

namespace Platform {

class ProcessActivity::Impl {
public:
    explicit Impl(id<NSObject> token)
        : token(token) {}

    const id<NSObject> token;
};

ProcessActivity ProcessActivity::begin(Options options, std::string_view reason) {
    @autoreleasepool {
        NSString* const text = foundationText(reason);
        return ProcessActivity(std::make_unique<Impl>([NSProcessInfo.processInfo
            beginActivityWithOptions:static_cast<NSActivityOptions>(options)
                              reason:text == nil ? @"" : text]));
    }
}

ProcessActivity::ProcessActivity(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

ProcessActivity::ProcessActivity(ProcessActivity&& other) noexcept = default;
ProcessActivity& ProcessActivity::operator=(ProcessActivity&& other) noexcept = default;

ProcessActivity::~ProcessActivity() {
    @autoreleasepool {
        impl_.reset();
    }
}

void ProcessActivity::end() {
    @autoreleasepool {
        if (const auto ended = std::exchange(impl_, nullptr))
            [NSProcessInfo.processInfo endActivity:ended->token];
    }
}

} // namespace Platform
