#include "Platform/FileSystemEventStream.h"

#include "Platform/Mutex.h"
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

class FileSystemEventStream::Impl {
public:
    Impl(NSString* path, std::chrono::nanoseconds latency, dispatch_queue_t queue,
         Callback callback)
        : queue_(queue)
        , receiver_(std::make_shared<Receiver>(Receiver{std::move(callback)})) {
        FSEventStreamContext context{0, receiver_.get(), nullptr, nullptr, nullptr};
        stream_ = FSEventStreamCreate(
            kCFAllocatorDefault, receive, &context, (__bridge CFArrayRef) @[ path ],
            kFSEventStreamEventIdSinceNow, std::chrono::duration<double>(latency).count(),
            kFSEventStreamCreateFlagUseCFTypes | kFSEventStreamCreateFlagFileEvents);
        if (stream_ == nullptr)
            return;
        FSEventStreamSetDispatchQueue(stream_, queue_);
        isStarted_ = FSEventStreamStart(stream_) != 0;
    }

    ~Impl() { end(); }

    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

    bool isCreated() const {
        const MutexLock lock(mutex_);
        return stream_ != nullptr;
    }

    /// A call-back may be under way on the queue; what it was given lives until it has returned.
    void end() {
        const MutexLock lock(mutex_);
        const auto stream = std::exchange(stream_, nullptr);
        if (stream == nullptr)
            return;
        if (isStarted_)
            FSEventStreamStop(stream);
        FSEventStreamInvalidate(stream);
        FSEventStreamRelease(stream);
        const auto receiver = receiver_;
        dispatch_barrier_async(queue_, ^{
            static_cast<void>(receiver);
        });
    }

private:
    const dispatch_queue_t queue_;
    const std::shared_ptr<Receiver> receiver_;

    mutable Mutex mutex_; // no call-back runs under it
    FSEventStreamRef stream_ CORBEL_GUARDED_BY(mutex_) = nullptr;
    bool isStarted_ CORBEL_GUARDED_BY(mutex_) = false;
};

std::unique_ptr<FileSystemEventStream> FileSystemEventStream::make(std::string_view path,
                                                                   std::chrono::nanoseconds latency,
                                                                   const DispatchQueue& queue,
                                                                   Callback callback) {
    @autoreleasepool {
        NSString* const text = foundationText(path);
        if (text == nil)
            return nullptr;
        auto impl =
            std::make_unique<Impl>(text, latency, queue.impl_->queue(), std::move(callback));
        return impl->isCreated() ? std::make_unique<FileSystemEventStream>(std::move(impl))
                                 : nullptr;
    }
}

FileSystemEventStream::FileSystemEventStream(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

FileSystemEventStream::~FileSystemEventStream() = default;

void FileSystemEventStream::end() const {
    impl_->end();
}

} // namespace Platform
