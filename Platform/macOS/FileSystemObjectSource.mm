#include "Platform/FileSystemObjectSource.h"

#include "Platform/POSIX/FileSystemPath.h"
#include "Platform/macOS/Boundary.h"
#include "Platform/macOS/DispatchQueueImpl.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <atomic>
#include <utility>

namespace Platform {
namespace {

/// When the folder's entries were last written; the epoch where that is unknown.
timespec lastWritten(int fileDescriptor) {
    struct stat status{};
    fstat(fileDescriptor, &status);
    return status.st_mtimespec;
}

bool isSame(const timespec& one, const timespec& other) {
    return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
}

/// What the handlers need. It does not hold the source, which holds them until it is cancelled.
struct Handlers {
    FileSystemObjectSource::Handler event;
    FileSystemObjectSource::Handler cancellation;
    std::atomic<bool> isSilenced = false; // no event handler starts any more
    std::atomic<bool> isReleased = false; // and the cancel handler does not run either
};

} // namespace

class FileSystemObjectSource::Impl {
public:
    Impl(int fileDescriptor, dispatch_queue_t queue)
        : source_(dispatch_source_create(DISPATCH_SOURCE_TYPE_VNODE,
                                         static_cast<uintptr_t>(fileDescriptor),
                                         DISPATCH_VNODE_WRITE, queue)) {
        // The system reports nothing that came before it has taken note of the source.
        const auto written = lastWritten(fileDescriptor);
        const auto handlers = handlers_;
        dispatch_source_set_registration_handler(source_, ^{
            if (!isSame(lastWritten(fileDescriptor), written))
                runEventHandler(*handlers);
        });
        dispatch_source_set_event_handler(source_, ^{
            runEventHandler(*handlers);
        });
        dispatch_source_set_cancel_handler(source_, ^{
            handlers->event = nullptr; // may hold the owner
            const auto cancellation = std::exchange(handlers->cancellation, nullptr);
            if (!handlers->isReleased && cancellation)
                runAtBoundary(cancellation);
        });
    }

    /// A source that is let go must be both active and cancelled, or the system ends the process.
    ~Impl() {
        if (dispatch_source_testcancel(source_) == 0)
            handlers_->isReleased = true;
        cancel();
    }

    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

    void setEventHandler(Handler handler) { handlers_->event = std::move(handler); }

    void setCancelHandler(Handler handler) { handlers_->cancellation = std::move(handler); }

    void resume() { dispatch_activate(source_); }

    void cancel() {
        handlers_->isSilenced = true;
        dispatch_source_cancel(source_);
        dispatch_activate(source_); // one that never ran has to, to run the cancel handler
    }

private:
    static void runEventHandler(const Handlers& handlers) {
        if (!handlers.isSilenced && handlers.event)
            runAtBoundary(handlers.event);
    }

    const std::shared_ptr<Handlers> handlers_ = std::make_shared<Handlers>();
    const dispatch_source_t source_;
};

int FileSystemObjectSource::openForEvents(const URL& url) {
    const auto path = fileSystemPath(url);
    return path ? ::open(path->c_str(), O_EVTONLY) : -1;
}

FileSystemObjectSource::FileSystemObjectSource(int fileDescriptor, const DispatchQueue& queue)
    : impl_(std::make_shared<Impl>(fileDescriptor, queue.impl_->queue())) {}

FileSystemObjectSource::~FileSystemObjectSource() = default;

void FileSystemObjectSource::setEventHandler(Handler handler) {
    impl_->setEventHandler(std::move(handler));
}

void FileSystemObjectSource::setCancelHandler(Handler handler) {
    impl_->setCancelHandler(std::move(handler));
}

void FileSystemObjectSource::resume() {
    impl_->resume();
}

void FileSystemObjectSource::cancel() {
    impl_->cancel();
}

} // namespace Platform
