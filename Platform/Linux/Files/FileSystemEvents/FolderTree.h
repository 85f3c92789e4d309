#pragma once

#include "Platform/FileHandle.h"
#include "Platform/Linux/Files/FileSystemEvents/EventBatch.h"
#include "Platform/Linux/Files/FileSystemEvents/FolderChanges.h"
#include "Platform/Linux/Files/FileSystemEvents/FolderTable.h"
#include "Platform/Linux/Files/FileSystemEvents/LeafFolders.h"
#include "Platform/Linux/Files/FileSystemEvents/WatchLedger.h"

#include <fcntl.h>

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Platform {

/// The watched folders of one tree. Adds new ones to the batch, each to be looked at as a whole.
/// For one thread at a time.
///
/// A folder is watched before it is listed, so that nothing in it is missed: what is made in
/// between is met twice. Its watch stays on it wherever it goes; the table follows, and may be
/// behind, for records come late. So no path is trusted: a folder is looked for in the open folder
/// that holds it, and that one counts only if it has the watch that it should have.
///
/// What cannot be looked at because something moves is noted, and gone over before each batch is
/// handed over: the records of what moved have been read by then, or are yet to come and have it
/// gone over once more.
class FolderTree {
public:
    /// The watches are the user's.
    FolderTree(std::string path, WatchLedger& watches, TreeFollower& user, EventBatch& batch);
    ~FolderTree();
    FolderTree(const FolderTree&) = delete;
    FolderTree& operator=(const FolderTree&) = delete;
    FolderTree(FolderTree&&) = delete;
    FolderTree& operator=(FolderTree&&) = delete;

    /// Goes over all that there is below the root, and gives up all else. The root is looked for by
    /// its name in an open folder, or is missing where that is -1. One that is no folder is watched
    /// alone.
    void passOver(int folder, const std::string& name);

    bool contains(int folder) { return table_.find(folder) != nullptr; }

    /// The folder's entry of that name has changed, or the folder itself where the name is empty.
    void noteChange(int folder, std::string_view name);

    /// Adds what has changed to the batch, by the path that it has by now. What was removed before
    /// was added by the last that it had.
    void reportChanges();

    /// That the last pass came to; FolderTable::none where it was missing.
    int root() const { return root_; }

    /// Looks at what has the name in the folder by now.
    void look(int parent, std::string_view name);

    /// What had the name in the folder may not be there by now.
    void noteDeparture(int parent, std::string_view name) { departures_[parent].emplace(name); }

    /// The folder has moved. Where it is not found at its place, it has left the tree for all that
    /// is known: if it comes back, or came back, it is met as a new one.
    void checkPlace(int folder);

    void remove(int folder);

    /// @{
    /// Something has moved, or has come or gone; what was not accessible may be so.
    void noteMovement() { hasMovement_ = true; }

    void noteAccess() { hasAccess_ = true; }

    /// @}

    /// Whether what is unsettled may be settled by now.
    bool isSettlementDue() const;

    void settle();

    /// Whether the way to the root may not be searched any more: nothing can be looked at until it
    /// may, and another pass is due, which finds no root.
    bool isOutOfReach() const { return isOutOfReach_; }

    /// Whether the last pass, or a look since then, lacked what the system may have again later.
    bool isShortOfWatches() const { return isShortOfWatches_; }

private:
    static constexpr int toList = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;

    static bool isAbsence(int code);

    enum class Reason { wholePass, change };
    enum class Place { here, elsewhere, unknown };

    struct Entered {
        int folder;
        FileHandle handle;
    };

    void enterRoot(int folder, const std::string& name);
    void follow(Entered first, Reason reason);
    std::optional<Entered> meet(int parent, int descriptor, const std::string& name, Reason reason);
    bool enter(int folder, int parent, const std::string& name, Reason reason);
    bool isMountedTwice(int folder);
    void move(int folder, int parent, const std::string& name, Reason reason);
    void report(int folder, const FolderChanges::Names& names);

    void removeDeparted();
    void listAgain(int folder);
    Place placeOf(int folder);

    int openFolder(int folder);
    void noteUnread(int folder, int code);
    void noteUnmet(int parent, int descriptor, int code);
    bool noteShortage(int code);
    void removeUnmet(unsigned pass);

    const std::string path_;
    WatchLedger& watches_;
    TreeFollower& user_;
    EventBatch& batch_;
    FolderTable table_;
    LeafFolders leafFolders_;
    int root_ = FolderTable::none;
    unsigned pass_ = 0;
    bool isShortOfWatches_ = false;
    bool hasLoggedLimit_ = false;
    bool isOutOfReach_ = false;

    FolderChanges changes_;
    std::set<int> unsettled_; // to be listed again
    std::set<int> locked_;    // to be listed again once something else is accessible
    std::map<int, std::set<std::string, std::less<>>> departures_; // names, by folders
    bool hasMovement_ = false;
    bool hasAccess_ = false;
};

} // namespace Platform
