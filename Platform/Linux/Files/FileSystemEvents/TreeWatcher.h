#pragma once

#include "Platform/Linux/Files/FileSystemEvents/EventBatch.h"
#include "Platform/Linux/Files/FileSystemEvents/WatchedTree.h"
#include "Platform/Linux/Files/FileSystemEvents/Watches.h"

#include <asio/any_io_executor.hpp>
#include <asio/posix/stream_descriptor.hpp>
#include <asio/strand.hpp>

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>

namespace Platform {

/// Reads the records of all watches and hands them to the trees that they concern. Callable on any
/// thread.
class TreeWatcher {
public:
    using Identifier = std::uint64_t;

    static TreeWatcher& shared();

    /// Watches the tree from now on and tells the call-back of it on the queue.
    /// Absent when the system has no inotify instance left.
    std::optional<Identifier> start(const std::string& root, const DispatchQueue& queue,
                                    std::chrono::nanoseconds latency,
                                    const FileSystemEventStream::Callback& callback);

    /// Adds the whole tree to what is told next.
    void tellWhole(Identifier identifier);

    void stop(Identifier identifier);

    TreeWatcher();

private:
    struct Entry {
        std::shared_ptr<EventBatch> batch; // outlives the tree
        std::unique_ptr<WatchedTree> tree;
    };

    // Under the mutex:
    bool open();
    void close();
    void waitForRecords();
    void dispatch(const inotify_event& record, std::string_view name);
    void removeUnusedSoon();

    void recover(Identifier identifier);
    void receive();

    asio::strand<asio::any_io_executor> strand_; // one reader at a time

    std::mutex mutex_; // guards all that follows
    asio::posix::stream_descriptor descriptor_;
    std::unique_ptr<Watches> watches_; // null while there is no tree
    std::uint64_t instance_ = 0;       // of inotify, so far
    std::map<Identifier, Entry> entries_;
    Identifier last_ = 0;
};

} // namespace Platform
