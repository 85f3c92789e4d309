#include "Platform/Linux/Files/FileSystemEvents/TreeEventReader.h"

#include "Platform/Linux/Loops/WorkerPool.h"
#include "Platform/NeverDestroyed.h"

#include <asio/post.hpp>

#include <utility>

namespace Platform {
namespace {

/// Of a storm that does not end, the rest is left for the next turn.
constexpr int mostReadsAtOnce = 64;

} // namespace

TreeEventReader& TreeEventReader::shared() {
    static const NeverDestroyed<TreeEventReader> watcher;
    return watcher.get();
}

TreeEventReader::TreeEventReader()
    : strand_(asio::make_strand(workerExecutor())) {}

std::optional<TreeEventReader::Identifier>
TreeEventReader::start(const std::string& root, const DispatchQueue& queue,
                       std::chrono::nanoseconds latency, FileSystemEventStream::Callback callback) {
    const MutexLock lock(mutex_);
    if (!open())
        return std::nullopt;
    const auto identifier = ++last_;
    auto batch = std::make_shared<EventBatch>(queue, latency, root, std::move(callback),
                                              [this, identifier] { handOver(identifier); });
    auto tree = std::make_unique<TreeFollower>(root, *watches_, batch);
    tree->start();
    watches_->closeFolders();
    entries_.emplace(identifier, Entry{.batch = std::move(batch), .tree = std::move(tree)});
    return identifier;
}

void TreeEventReader::stop(Identifier identifier) {
    std::shared_ptr<EventBatch> batch; // and with it the call-back go when the lock is free
    const MutexLock lock(mutex_);
    const auto found = entries_.find(identifier);
    if (found == entries_.end())
        return;
    batch = std::move(found->second.batch);
    batch->end();
    entries_.erase(found);
    if (entries_.empty()) {
        watches_.reset(); // all watches go with the instance
        mounts_.reset();
    } else {
        removeUnusedSoon();
    }
}

bool TreeEventReader::open() {
    if (watches_)
        return true;
    watches_ = WatchLedger::make(strand_);
    if (!watches_)
        return false;
    ++instance_;
    waitForRecords();
    mounts_ = std::make_unique<MountTable>(strand_);
    waitForMounts();
    return true;
}

void TreeEventReader::waitForRecords() {
    watches_->waitForRecords([this, instance = instance_] {
        receive();
        const MutexLock lock(mutex_);
        if (watches_ && instance == instance_)
            waitForRecords();
    });
}

void TreeEventReader::waitForMounts() {
    mounts_->waitForChange([this, instance = instance_] { receiveMounts(instance); });
}

// Waits again before it looks, so that no change falls in between.
void TreeEventReader::receiveMounts(std::uint64_t instance) {
    const MutexLock lock(mutex_);
    if (!mounts_ || instance != instance_)
        return;
    waitForMounts();
    for (const auto& path : mounts_->changes()) {
        for (const auto& [identifier, entry] : entries_)
            entry.tree->handleMount(path);
    }
}

// The lock is free after each read, for whoever wants to start or stop.
void TreeEventReader::receive() {
    for (int read = 0; read < mostReadsAtOnce; ++read) {
        const MutexLock lock(mutex_);
        if (!watches_)
            return;
        auto records = watches_->read();
        const bool isDrained = records.isEmpty();
        while (const auto record = records.next())
            dispatch(*record);
        watches_->closeFolders();
        watches_->removeUnused();
        if (isDrained && !watches_->hasUnused())
            return;
    }
    const MutexLock lock(mutex_);
    if (watches_)
        removeUnusedSoon();
}

void TreeEventReader::dispatch(const InotifyRecord& record) {
    if ((record.events & IN_Q_OVERFLOW) != 0) {
        for (const auto& [identifier, entry] : entries_)
            entry.tree->loseCount();
        return;
    }
    for (auto* const tree : watches_->users(record.watch))
        tree->handle(record);
}

// No record is handled between the look and the hand-over: what is handed over is of a tree that
// was looked at with all records so far.
void TreeEventReader::handOver(Identifier identifier) {
    receive();
    const MutexLock lock(mutex_);
    const auto found = entries_.find(identifier);
    if (found == entries_.end())
        return;
    found->second.tree->catchUp();
    watches_->closeFolders();
    removeUnusedSoon();
    found->second.batch->handOver();
}

void TreeEventReader::removeUnusedSoon() {
    if (watches_->hasUnused())
        asio::post(strand_, [this] { receive(); });
}

} // namespace Platform
