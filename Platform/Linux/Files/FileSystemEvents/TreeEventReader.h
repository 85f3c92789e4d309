#pragma once

#include "Platform/Linux/Files/FileSystemEvents/EventBatch.h"
#include "Platform/Linux/Files/FileSystemEvents/MountTable.h"
#include "Platform/Linux/Files/FileSystemEvents/TreeFollower.h"
#include "Platform/Linux/Files/FileSystemEvents/WatchLedger.h"
#include "Platform/Mutex.h"

#include <asio/any_io_executor.hpp>
#include <asio/strand.hpp>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace Platform {

/// Reads the records of all watches and hands them to the trees that they concern. Callable on any
/// thread.
class TreeEventReader {
public:
    using Identifier = std::uint64_t;

    static TreeEventReader& shared();

    /// Watches the tree from now on, for the call-back on the queue.
    /// Absent when the system has no inotify instance left.
    std::optional<Identifier> start(const std::string& root, const DispatchQueue& queue,
                                    std::chrono::nanoseconds latency,
                                    FileSystemEventStream::Callback callback);

    /// A second stop does nothing.
    void stop(Identifier identifier);

    TreeEventReader();

private:
    struct Entry {
        std::shared_ptr<EventBatch> batch; // outlives the tree
        std::unique_ptr<TreeFollower> tree;
    };

    bool open() CORBEL_REQUIRES(mutex_);
    void waitForRecords() CORBEL_REQUIRES(mutex_);
    void waitForMounts() CORBEL_REQUIRES(mutex_);
    void dispatch(const InotifyRecord& record) CORBEL_REQUIRES(mutex_);
    void removeUnusedSoon() CORBEL_REQUIRES(mutex_);

    void handOver(Identifier identifier);
    void receive();
    void receiveMounts(std::uint64_t instance);

    asio::strand<asio::any_io_executor> strand_; // one reader at a time

    Mutex mutex_;
    std::unique_ptr<WatchLedger> watches_ CORBEL_GUARDED_BY(mutex_); // null while there is no tree
    std::unique_ptr<MountTable> mounts_ CORBEL_GUARDED_BY(mutex_);   // likewise
    std::uint64_t instance_ CORBEL_GUARDED_BY(mutex_) = 0;           // of inotify, so far
    std::map<Identifier, Entry> entries_ CORBEL_GUARDED_BY(mutex_);
    Identifier last_ CORBEL_GUARDED_BY(mutex_) = 0;
};

} // namespace Platform
