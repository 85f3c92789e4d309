#include "Platform/Linux/Files/FileSystemEvents/TreeWatcher.h"
#include "Platform/Native/NativeEventStream.h"

#include <optional>
#include <string>
#include <utility>

namespace Platform {

class NativeEventStream::Impl {
public:
    Impl(std::string_view path, std::chrono::nanoseconds latency,
         FileSystemEventStream::Callback callback)
        : path_(path)
        , latency_(latency)
        , callback_(std::move(callback)) {}

    void setDispatchQueue(const DispatchQueue& queue) { queue_ = queue; }

    bool start() {
        if (!queue_)
            return false;
        tree_ = TreeWatcher::shared().start(path_, *queue_, latency_, callback_);
        if (!tree_)
            return false;
        if (std::exchange(hasRun_, true))
            TreeWatcher::shared().tellWhole(*tree_);
        return true;
    }

    void stop() {
        if (const auto tree = std::exchange(tree_, std::nullopt))
            TreeWatcher::shared().stop(*tree);
    }

    void invalidate() { queue_.reset(); }

private:
    const std::string path_;
    const std::chrono::nanoseconds latency_;
    const FileSystemEventStream::Callback callback_;
    std::optional<DispatchQueue> queue_;
    std::optional<TreeWatcher::Identifier> tree_;
    bool hasRun_ = false;
};

std::unique_ptr<NativeEventStream>
NativeEventStream::create(std::string_view path, std::chrono::nanoseconds latency,
                          FileSystemEventStream::Callback callback) {
    return std::make_unique<NativeEventStream>(
        std::make_unique<Impl>(path, latency, std::move(callback)));
}

NativeEventStream::NativeEventStream(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

NativeEventStream::~NativeEventStream() = default;

void NativeEventStream::setDispatchQueue(const DispatchQueue& queue) {
    impl_->setDispatchQueue(queue);
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
