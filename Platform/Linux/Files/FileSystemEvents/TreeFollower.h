#pragma once

#include "Platform/Linux/Files/FileSystemEvents/EventBatch.h"
#include "Platform/Linux/Files/FileSystemEvents/FolderTree.h"
#include "Platform/Linux/Files/FileSystemEvents/WatchLedger.h"
#include "Platform/Linux/Files/FileSystemEvents/WatchedPath.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

namespace Platform {

/// Follows whatever lies at one path, the root of a tree: keeps the folders of the tree and the
/// path itself watched, and adds what changes to the batch. For one thread at a time.
class TreeFollower {
public:
    TreeFollower(std::string root, WatchLedger& watches, std::shared_ptr<EventBatch> batch);

    /// Watches what there is.
    void start() { passOver(); }

    /// A record of one of the tree's watches.
    void handle(const InotifyRecord& record);

    /// Something was mounted at the path, or is not any more.
    void handleMount(std::string_view path);

    /// Events were lost: the tree is to be looked at as a whole.
    void loseCount();

    /// Before a batch is handed over: makes the watches right, and adds what has changed, by the
    /// paths that this has shown.
    void catchUp();

private:
    using Clock = std::chrono::steady_clock;

    void handleOwn(const InotifyRecord& record);
    void handleEntry(const InotifyRecord& record);

    /// Goes over the whole tree if count was lost, if another root may be there, or if watches or
    /// the sight of the root were wanting and may be had now; else over the folders that are
    /// unsettled.
    void makeWatchesRight();
    bool isWholePassDue() const;
    void passOver();

    const std::string rootPath_;
    WatchLedger& watches_;
    const std::shared_ptr<EventBatch> batch_;
    FolderTree folders_;
    std::unique_ptr<WatchedPath> path_; // from the first pass on
    bool hasLostCount_ = false;
    Clock::duration retryDelay_{}; // zero while nothing is wanting
    Clock::time_point nextRetry_;
};

} // namespace Platform
