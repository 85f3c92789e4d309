#include "Platform/Linux/Files/FileSystemEvents/TreeWatcher.h"

#include "Platform/Linux/Files/Inotify/InotifyRecords.h"
#include "Platform/Linux/Loops/WorkerPool.h"
#include "Platform/NeverDestroyed.h"

#include <asio/post.hpp>

#include <filesystem>
#include <utility>

namespace Platform {
namespace {

/// How a batch says that the whole tree is to be looked at.
std::string wholeOf(const std::string& root) {
    std::error_code error;
    const auto status = std::filesystem::symlink_status(root, error);
    const bool isFile = std::filesystem::exists(status) && !std::filesystem::is_directory(status);
    return isFile || root.ends_with('/') ? root : root + '/';
}

} // namespace

TreeWatcher& TreeWatcher::shared() {
    static const NeverDestroyed<TreeWatcher> watcher;
    return watcher.get();
}

TreeWatcher::TreeWatcher()
    : strand_(asio::make_strand(workerExecutor()))
    , descriptor_(strand_) {}

std::optional<TreeWatcher::Identifier>
TreeWatcher::start(const std::string& root, const DispatchQueue& queue,
                   std::chrono::nanoseconds latency,
                   const FileSystemEventStream::Callback& callback) {
    const std::lock_guard lock(mutex_);
    if (!open())
        return std::nullopt;
    const auto identifier = ++last_;
    auto batch = std::make_shared<EventBatch>(queue, latency, wholeOf(root), callback,
                                              [this, identifier] { recover(identifier); });
    auto tree = std::make_unique<WatchedTree>(root, *watches_, batch);
    tree->start();
    entries_.emplace(identifier, Entry{.batch = std::move(batch), .tree = std::move(tree)});
    return identifier;
}

void TreeWatcher::tellWhole(Identifier identifier) {
    const std::lock_guard lock(mutex_);
    if (const auto found = entries_.find(identifier); found != entries_.end())
        found->second.batch->addWhole();
}

void TreeWatcher::stop(Identifier identifier) {
    std::shared_ptr<EventBatch> batch; // and with it the call-back go when the lock is free
    const std::lock_guard lock(mutex_);
    const auto found = entries_.find(identifier);
    if (found == entries_.end())
        return;
    batch = std::move(found->second.batch);
    batch->end();
    entries_.erase(found);
    if (entries_.empty()) {
        close();
    } else {
        removeUnusedSoon();
    }
}

bool TreeWatcher::open() {
    if (watches_)
        return true;
    auto watches = Watches::make();
    if (!watches)
        return false;
    asio::error_code failure;
    descriptor_.assign(watches->fileDescriptor(), failure);
    if (failure)
        return false;
    watches_ = std::move(watches);
    ++instance_;
    waitForRecords();
    return true;
}

// All watches go with the instance.
void TreeWatcher::close() {
    descriptor_.release();
    watches_.reset();
}

void TreeWatcher::waitForRecords() {
    descriptor_.async_wait(asio::posix::stream_descriptor::wait_read,
                           [this, instance = instance_](asio::error_code failure) {
                               if (failure)
                                   return;
                               receive();
                               const std::lock_guard lock(mutex_);
                               if (watches_ && instance == instance_)
                                   waitForRecords();
                           });
}

// The lock is free after each read, for whoever wants to start or stop.
void TreeWatcher::receive() {
    for (bool isMoreToDo = true; isMoreToDo;) {
        const std::lock_guard lock(mutex_);
        if (!watches_)
            return;
        const auto records = watches_->read();
        forEachInotifyRecord(records, [this](const inotify_event& record, std::string_view name) {
            dispatch(record, name);
        });
        watches_->removeUnused();
        isMoreToDo = !records.empty() || watches_->hasUnused();
    }
}

void TreeWatcher::dispatch(const inotify_event& record, std::string_view name) {
    if ((record.mask & IN_Q_OVERFLOW) != 0) {
        for (const auto& [identifier, entry] : entries_)
            entry.tree->loseCount();
        return;
    }
    for (auto* const tree : watches_->users(record.wd))
        tree->handle(record, name);
}

void TreeWatcher::recover(Identifier identifier) {
    const std::lock_guard lock(mutex_);
    const auto found = entries_.find(identifier);
    if (found == entries_.end())
        return;
    found->second.tree->recover();
    removeUnusedSoon();
}

void TreeWatcher::removeUnusedSoon() {
    if (watches_->hasUnused())
        asio::post(strand_, [this] { receive(); });
}

} // namespace Platform
