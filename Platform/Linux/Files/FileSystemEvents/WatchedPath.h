#pragma once

#include "Platform/FileHandle.h"
#include "Platform/Linux/Files/Inotify/Inotify.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Platform {

class TreeFollower;
class WatchLedger;

/// The watches along the path of one item, which may be missing, as may folders above it: they have
/// records when the path may lead to another item by then, and a new object is due. Nothing is
/// polled. A link on the way counts as missing.
///
/// Each folder is watched before the next is looked for in it, so that no change is missed. Of one
/// that may not be watched, for it may be searched but not read, the folder above has a record when
/// it goes.
class WatchedPath {
public:
    /// The path is absolute; the watches are the user's.
    WatchedPath(std::string_view path, WatchLedger& watches, TreeFollower& user);
    ~WatchedPath();
    WatchedPath(const WatchedPath&) = delete;
    WatchedPath& operator=(const WatchedPath&) = delete;
    WatchedPath(WatchedPath&&) = delete;
    WatchedPath& operator=(WatchedPath&&) = delete;

    bool isConcernedBy(const InotifyRecord& record) const;

    /// Whether what is missing may come without a record, into a folder that may not be watched.
    bool isBlind() const { return isBlind_; }

    /// The item's folder, open for no more than to look from. -1 where there is none, and when it
    /// was taken before.
    FileHandle takeFolder() { return std::move(folder_); }

    /// "." where the path is that of the file system's root.
    const std::string& itemName() const { return itemName_; }

private:
    struct Step {
        FileHandle folder; // open while the path is gone along
        std::string name;  // on the path, in the folder
        int watch = -1;
        std::uint32_t events = 0;
    };

    void goAlong(std::string_view path);
    bool goOn();
    void watchItem();
    bool add(Step& step, std::uint32_t events);
    void addLast(std::uint32_t events);
    void addWhatMayRelease(int failure);

    WatchLedger& watches_;
    TreeFollower& user_;
    std::vector<Step> steps_;
    bool isBlind_ = false;
    FileHandle folder_{-1};
    std::string itemName_ = ".";
};

} // namespace Platform
