#pragma once

#include "Platform/Linux/Files/FileSystemEvents/EventBatch.h"
#include "Platform/Linux/Files/FileSystemEvents/FolderTable.h"
#include "Platform/Linux/Files/FileSystemEvents/WatchLedger.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Platform {

/// Keeps a watch on every folder below one root and adds what changes there to the batch. For one
/// thread at a time.
///
/// A folder is watched before it is listed, so that nothing in it is missed: what is made in
/// between is met twice. Its watch stays on it wherever it goes; the table follows.
class TreeFollower {
public:
    TreeFollower(std::string root, WatchLedger& watches, std::shared_ptr<EventBatch> batch);
    ~TreeFollower();
    TreeFollower(const TreeFollower&) = delete;
    TreeFollower& operator=(const TreeFollower&) = delete;
    TreeFollower(TreeFollower&&) = delete;
    TreeFollower& operator=(TreeFollower&&) = delete;

    /// Watches what there is.
    void start();

    /// A record of one of the tree's watches.
    void handle(const InotifyRecord& record);

    /// Events were lost: the tree is to be looked at as a whole.
    void loseCount();

    /// Goes over the tree again if count was lost, or if watches were wanting and may be had now.
    void recover();

private:
    using Clock = std::chrono::steady_clock;

    /// A folder on the way to being watched.
    struct Candidate {
        int parent;
        std::size_t parentPathLength;
        std::string name;
    };

    enum class Reason { wholePass, newFolder };

    void passOver();
    void followSubfolder(int parent, const std::string& path, std::string_view name);
    void follow(Candidate first, std::string path, Reason reason);
    void list(const std::string& path, int folder, std::vector<Candidate>& found);
    int watch(const Candidate& candidate, const std::string& path);
    bool place(int folder, const Candidate& candidate, const std::string& path, Reason reason);
    void move(int folder, const Candidate& candidate, const std::string& path, Reason reason);
    void noteFailure(int code);
    void checkPlace(int folder);
    void giveUp(const std::vector<int>& folders);

    const std::string rootPath_;
    WatchLedger& watches_;
    const std::shared_ptr<EventBatch> batch_;
    FolderTable folders_;
    int root_ = FolderTable::none;
    unsigned pass_ = 0;
    bool hasLostCount_ = false;
    bool isShortOfWatches_ = false;
    Clock::duration retryDelay_{};
    Clock::time_point nextRetry_;
};

} // namespace Platform
