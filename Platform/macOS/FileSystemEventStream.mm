#include "Platform/Native/NativeEventStream.h"
#include "Platform/macOS/Boundary.h"
#include "Platform/macOS/DispatchQueueImpl.h"
#include "Platform/macOS/Text.h"

#import <CoreServices/CoreServices.h>

#include <string>
#include <utility>
#include <vector>

namespace Platform {
namespace {

/// What the system hands back with the events. It does not hold the stream.
struct Receiver {
    const FileSystemEventStream::Callback callback;
};

std::vector<std::string> portableTexts(NSArray<NSString*>* texts) {
    std::vector<std::string> result;
    for (NSString* text in texts)
        result.push_back(portableText(text));
    return result;
}

void receive(ConstFSEventStreamRef, void* info, size_t, void* eventPaths,
             const FSEventStreamEventFlags*, const FSEventStreamEventId*) noexcept {
    if (info == nullptr)
        return;
    runAtBoundary([&] {
        const id paths = (__bridge id)eventPaths;
        if ([paths isKindOfClass:NSArray.class])
            static_cast<const Receiver*>(info)->callback(portableTexts(paths));
    });
}

} // namespace

class NativeEventStream::Impl {
public:
    Impl(NSString* path, std::chrono::nanoseconds latency, FileSystemEventStream::Callback callback)
        : receiver_(std::make_shared<Receiver>(Receiver{std::move(callback)})) {
        FSEventStreamContext context{0, receiver_.get(), nullptr, nullptr, nullptr};
        stream_ = FSEventStreamCreate(
            kCFAllocatorDefault, receive, &context, (__bridge CFArrayRef) @[ path ],
            kFSEventStreamEventIdSinceNow, std::chrono::duration<double>(latency).count(),
            kFSEventStreamCreateFlagUseCFTypes | kFSEventStreamCreateFlagFileEvents);
    }

    ~Impl() {
        if (stream_ != nullptr)
            FSEventStreamRelease(stream_);
    }

    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

    bool isCreated() const { return stream_ != nullptr; }

    void setDispatchQueue(dispatch_queue_t queue) {
        queue_ = queue;
        FSEventStreamSetDispatchQueue(stream_, queue);
    }

    bool start() { return FSEventStreamStart(stream_) != 0; }

    void stop() { FSEventStreamStop(stream_); }

    /// A call-back may be under way on the queue; what it was given lives until it has returned.
    void invalidate() {
        FSEventStreamInvalidate(stream_);
        const auto receiver = receiver_;
        dispatch_barrier_async(queue_, ^{
            static_cast<void>(receiver);
        });
    }

private:
    const std::shared_ptr<Receiver> receiver_;
    FSEventStreamRef stream_ = nullptr;
    dispatch_queue_t queue_ = nil;
};

std::unique_ptr<NativeEventStream>
NativeEventStream::create(std::string_view path, std::chrono::nanoseconds latency,
                          FileSystemEventStream::Callback callback) {
    @autoreleasepool {
        NSString* const text = foundationText(path);
        if (text == nil)
            return nullptr;
        auto impl = std::make_unique<Impl>(text, latency, std::move(callback));
        return impl->isCreated() ? std::make_unique<NativeEventStream>(std::move(impl)) : nullptr;
    }
}

NativeEventStream::NativeEventStream(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

NativeEventStream::~NativeEventStream() = default;

void NativeEventStream::setDispatchQueue(const DispatchQueue& queue) {
    impl_->setDispatchQueue(queue.impl_->queue());
}

bool NativeEventStream::start() {
    return impl_->start();
}

void NativeEventStream::stop() {
    impl_->stop();
}

void NativeEventStream::invalidate() {
    impl_->invalidate();
}

} // namespace Platform
