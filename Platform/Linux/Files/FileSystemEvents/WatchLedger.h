#pragma once

#include "Platform/FileHandle.h"
#include "Platform/Linux/Files/Inotify/Inotify.h"

#include <asio/any_io_executor.hpp>

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Platform {

class TreeFollower;

/// The watches of all trees, on the one inotify instance that the process has for them: the system
/// allows few instances. An item has one watch however many trees hold it, and its watch is its
/// identity: an open item is the one that is meant if its watch is. For one thread at a time.
class WatchLedger {
public:
    /// Null when the system has no instance left.
    static std::unique_ptr<WatchLedger> make(const asio::any_io_executor& executor);

    explicit WatchLedger(Inotify inotify);

    /// @{
    /// The watch of an open item: an earlier one where it has one. -1 with `errno`. It stays when
    /// it is put to use before the next `removeUnused`. For all changes of the item and, in a
    /// folder, of its entries; or for some events more than it is watched for already.
    int add(int openItem);
    int add(int openItem, std::uint32_t events);
    /// @}

    void use(int watch, TreeFollower& tree);
    void giveUp(int watch, TreeFollower& tree);
    std::vector<TreeFollower*> users(int watch) const;

    bool hasUnused() const { return !unused_.empty(); }

    /// Removes some of the watches that nobody uses any more. Each leaves a record to be read, so
    /// that many at once would fill the system's queue.
    void removeUnused();

    /// The folder of the watch, open for no more than to look from, and good until the next is
    /// asked for. -1 with `errno`: ESTALE where its path leads to another item.
    int openFolder(int watch, const std::function<std::string()>& path);

    /// Closes what `openFolder` has opened: an open folder keeps its file system from being
    /// unmounted.
    void closeFolders() { folders_.clear(); }

    /// As of `Inotify`, with a buffer of its own.
    void waitForRecords(std::function<void()> handler);
    InotifyRecords read();

private:
    int noteUnused(int watch);

    Inotify inotify_;
    std::unordered_multimap<int, TreeFollower*> users_;
    std::vector<int> unused_;                        // or so it seemed
    std::deque<std::pair<int, FileHandle>> folders_; // by their watches
    std::vector<char> buffer_;
};

} // namespace Platform
