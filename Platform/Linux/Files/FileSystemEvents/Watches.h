#pragma once

#include "Platform/FileHandle.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace Platform {

class WatchedTree;

/// The watches of all trees, on the one inotify instance that the process has for them: the system
/// allows few instances. An item has one watch however many trees hold it. For one thread at a
/// time.
class Watches {
public:
    /// Null when the system has no instance left.
    static std::unique_ptr<Watches> make();

    explicit Watches(FileHandle inotify);

    int fileDescriptor() const { return inotify_.fileDescriptor(); }

    enum class Item { folder, anything };

    /// The watch of the item at the path: an earlier one where it has one. -1 with `errno`.
    /// It stays when it is put to use before the next `removeUnused`.
    int add(const std::string& path, Item item);

    void use(int watch, WatchedTree& tree);
    void giveUp(int watch, WatchedTree& tree);
    std::vector<WatchedTree*> users(int watch) const;

    bool hasUnused() const { return !unused_.empty(); }

    /// Removes some of the watches that nobody uses any more. Each leaves a record to be read, so
    /// that many at once would fill the system's queue.
    void removeUnused();

    /// The next records; none when there are none yet.
    std::span<const char> read();

private:
    FileHandle inotify_;
    std::unordered_multimap<int, WatchedTree*> users_;
    std::vector<int> unused_; // or so it seemed
    std::vector<char> buffer_;
    bool hasToldOfLimit_ = false;
};

} // namespace Platform
