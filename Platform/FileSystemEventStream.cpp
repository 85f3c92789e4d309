#include "Platform/FileSystemEventStream.h"

#include "Platform/Native/NativeEventStream.h"

#include <mutex>
#include <utility>

namespace Platform {

class FileSystemEventStream::Steps {
public:
    explicit Steps(std::unique_ptr<NativeEventStream> native)
        : native_(std::move(native)) {}

    ~Steps() {
        stop();
        invalidate();
        release();
    }

    Steps(const Steps&) = delete;
    Steps& operator=(const Steps&) = delete;
    Steps(Steps&&) = delete;
    Steps& operator=(Steps&&) = delete;

    void setDispatchQueue(const DispatchQueue& queue) {
        const std::lock_guard lock(mutex_);
        if (advance(State::created, State::scheduled))
            native_->setDispatchQueue(queue);
    }

    void start() {
        const std::lock_guard lock(mutex_);
        if (state_ == State::scheduled && native_->start())
            state_ = State::started;
    }

    void stop() {
        const std::lock_guard lock(mutex_);
        if (advance(State::started, State::scheduled))
            native_->stop();
    }

    void invalidate() {
        const std::lock_guard lock(mutex_);
        if (advance(State::scheduled, State::invalidated))
            native_->invalidate();
    }

    void release() {
        std::unique_ptr<NativeEventStream> released; // and the call-back go when the lock is free
        const std::lock_guard lock(mutex_);
        if (advance(State::created, State::released) ||
            advance(State::invalidated, State::released))
            released = std::move(native_);
    }

private:
    enum class State { created, scheduled, started, invalidated, released };

    bool advance(State from, State to) {
        if (state_ != from)
            return false;
        state_ = to;
        return true;
    }

    std::mutex mutex_; // guards all that follows; no call-back runs under it
    State state_ = State::created;
    std::unique_ptr<NativeEventStream> native_;
};

FileSystemEventStream::FileSystemEventStream(std::shared_ptr<Steps> steps)
    : steps_(std::move(steps)) {}

std::optional<FileSystemEventStream> FileSystemEventStream::create(std::string_view path,
                                                                   std::chrono::nanoseconds latency,
                                                                   Callback callback) {
    auto native = NativeEventStream::create(path, latency, std::move(callback));
    if (!native)
        return std::nullopt;
    return FileSystemEventStream(std::make_shared<Steps>(std::move(native)));
}

void FileSystemEventStream::setDispatchQueue(const DispatchQueue& queue) const {
    steps_->setDispatchQueue(queue);
}

void FileSystemEventStream::start() const {
    steps_->start();
}

void FileSystemEventStream::stop() const {
    steps_->stop();
}

void FileSystemEventStream::invalidate() const {
    steps_->invalidate();
}

void FileSystemEventStream::release() const {
    steps_->release();
}

} // namespace Platform
