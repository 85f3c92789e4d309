#include "Platform/FileSystemObjectSource.h"

#include "Platform/Linux/Files/Inotify/Inotify.h"
#include "Platform/Linux/Loops/SignalsElsewhere.h"
#include "Platform/Linux/Loops/WorkerPool.h"
#include "Platform/POSIX/FileSystemPath.h"

#include <asio/post.hpp>
#include <asio/strand.hpp>

#include <array>
#include <atomic>
#include <chrono>
#include <utility>

namespace Platform {
namespace {

constexpr std::uint32_t entriesWritten = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;

// Between two events. Each that is awaited costs several changes of threads, so that without this
// a source would be at work as long as a storm lasts.
constexpr std::chrono::milliseconds pause(10);

/// Empties the event queue; whether entries were written, or events lost.
bool drain(Inotify& inotify) {
    std::array<char, 16384> buffer;
    bool written = false;
    for (auto records = inotify.read(buffer); !records.isEmpty(); records = inotify.read(buffer)) {
        while (const auto record = records.next())
            written |= (record->events & (entriesWritten | IN_Q_OVERFLOW)) != 0;
    }
    return written;
}

} // namespace

// Lives on while an operation of the descriptor or a handler is under way.
class FileSystemObjectSource::Impl : public std::enable_shared_from_this<Impl> {
public:
    Impl(int fileDescriptor, DispatchQueue queue)
        : fileDescriptor_(fileDescriptor)
        , queue_(std::move(queue))
        , strand_(asio::make_strand(workerExecutor()))
        , inotify_(strand_, fileDescriptor) {}

    ~Impl() { inotify_.release(); }

    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

    void setEventHandler(Handler handler) { eventHandler_ = std::move(handler); }

    void setCancelHandler(Handler handler) { cancelHandler_ = std::move(handler); }

    void resume() {
        asio::post(strand_, [self = shared_from_this()] { self->waitForEvents(); });
    }

    void cancel() {
        if (!silenced_.exchange(true))
            asio::post(strand_, [self = shared_from_this()] { self->endDelivery(true); });
    }

    void release() {
        if (!silenced_.exchange(true))
            asio::post(strand_, [self = shared_from_this()] { self->endDelivery(false); });
    }

private:
    void waitForEvents() {
        if (ended_)
            return;
        inotify_.waitForRecords([self = shared_from_this()] {
            if (!self->ended_)
                self->receiveEvents();
        });
    }

    void receiveEvents() {
        if (!drain(inotify_)) {
            waitForEvents();
            return;
        }
        // The next events are awaited some time after the handler has returned: so it never runs
        // beside itself, and what came meanwhile is one event. Until then no record wakes a thread.
        inotify_.release();
        handlerUnderWay_ = true;
        queue_.async([self = shared_from_this()] {
            if (!self->silenced_ && self->eventHandler_)
                self->eventHandler_();
            asio::post(self->strand_, [self] { self->handlerReturned(); });
        });
    }

    void handlerReturned() {
        handlerUnderWay_ = false;
        if (ended_) {
            finish();
            return;
        }
        pauseBeforeTheNext();
    }

    void pauseBeforeTheNext() {
        workerTimers().start(TimerQueue::Clock::now() + pause, [self = shared_from_this()] {
            asio::post(self->strand_, [self] { self->takeUpAgain(); });
        });
    }

    void takeUpAgain() {
        if (ended_)
            return;
        inotify_ = Inotify(strand_, fileDescriptor_);
        if (inotify_.isOpen()) {
            waitForEvents();
        } else { // short of memory at present
            pauseBeforeTheNext();
        }
    }

    void endDelivery(bool cancelled) {
        ended_ = true;
        cancelled_ = cancelled;
        inotify_.release();
        if (!handlerUnderWay_)
            finish();
    }

    void finish() {
        eventHandler_ = nullptr; // may hold the owner
        if (auto handler = std::exchange(cancelHandler_, nullptr); handler && cancelled_)
            queue_.async(std::move(handler));
    }

    const int fileDescriptor_; // the caller's
    const DispatchQueue queue_;
    asio::strand<asio::any_io_executor> strand_;
    std::atomic<bool> silenced_ = false; // no event handler starts any more
    Handler eventHandler_;               // set before `resume`, then read by the handler's task

    // On the strand only.
    Inotify inotify_; // open while events are awaited
    Handler cancelHandler_;
    bool handlerUnderWay_ = false;
    bool ended_ = false;
    bool cancelled_ = false;
};

int FileSystemObjectSource::openForEvents(const URL& url) {
    const auto path = fileSystemPath(url);
    if (!path)
        return -1;
    auto inotify = Inotify::make(workerExecutor());
    const SignalsElsewhere elsewhere;
    if (!inotify || inotify->add(path->c_str(), entriesWritten) == -1)
        return -1;
    return inotify->release();
}

FileSystemObjectSource::FileSystemObjectSource(int fileDescriptor, const DispatchQueue& queue)
    : impl_(std::make_shared<Impl>(fileDescriptor, queue)) {}

FileSystemObjectSource::~FileSystemObjectSource() {
    impl_->release();
}

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
