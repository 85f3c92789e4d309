#pragma once

#include "Platform/Linux/Files/Inotify/Inotify.h"

#include <asio/any_io_executor.hpp>

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace Platform {

class TreeFollower;

/// The watches of all trees, on the one inotify instance that the process has for them: the system
/// allows few instances. An item has one watch however many trees hold it. For one thread at a
/// time.
class WatchLedger {
public:
    /// Null when the system has no instance left.
    static std::unique_ptr<WatchLedger> make(const asio::any_io_executor& executor);

    explicit WatchLedger(Inotify inotify);

    enum class Item { folder, anything };

    /// The watch of the item at the path: an earlier one where it has one. -1 with `errno`.
    /// It stays when it is put to use before the next `removeUnused`.
    int add(const std::string& path, Item item);

    void use(int watch, TreeFollower& tree);
    void giveUp(int watch, TreeFollower& tree);
    std::vector<TreeFollower*> users(int watch) const;

    bool hasUnused() const { return !unused_.empty(); }

    /// Removes some of the watches that nobody uses any more. Each leaves a record to be read, so
    /// that many at once would fill the system's queue.
    void removeUnused();

    /// As of `Inotify`, with a buffer of its own.
    void waitForRecords(std::function<void()> handler);
    InotifyRecords read();

private:
    Inotify inotify_;
    std::unordered_multimap<int, TreeFollower*> users_;
    std::vector<int> unused_; // or so it seemed
    std::vector<char> buffer_;
    bool hasLoggedLimit_ = false;
};

} // namespace Platform
