#include "Platform/Linux/Files/FileSystemEvents/FolderTree.h"

#include "Platform/Linux/Files/FileSystemEvents/FolderWalk.h"
#include "Platform/Log.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace Platform {
namespace {

constexpr int toWatch = O_PATH | O_NOFOLLOW | O_CLOEXEC;

/// Whether the system may allow later what it does not now.
bool isShortage(int code) {
    return code == ENOSPC || code == ENOMEM || code == EMFILE || code == ENFILE;
}

} // namespace

/// Whether it says that there is no such folder.
bool FolderTree::isAbsence(int code) {
    return code == ENOENT || code == ENOTDIR || code == ELOOP;
}

FolderTree::FolderTree(std::string path, WatchLedger& watches, TreeFollower& user,
                       EventBatch& batch)
    : path_(std::move(path))
    , watches_(watches)
    , user_(user)
    , batch_(batch) {}

FolderTree::~FolderTree() {
    changes_.takeAll();
    removeUnmet(++pass_); // which met none
}

void FolderTree::passOver(int folder, const std::string& name) {
    ++pass_;
    root_ = FolderTable::none;
    isShortOfWatches_ = false;
    isOutOfReach_ = false;
    unsettled_.clear();
    locked_.clear();
    departures_.clear();
    if (folder != -1)
        enterRoot(folder, name);
    if (!isShortOfWatches_) // else what the pass did not get to may well be there still
        removeUnmet(pass_);
}

void FolderTree::enterRoot(int folder, const std::string& name) {
    FileHandle root(openat(folder, name.c_str(), toList));
    const bool isFolder = root.fileDescriptor() != -1;
    if (!isFolder && errno != ENOENT && isAbsence(errno))
        root = FileHandle(openat(folder, name.c_str(), toWatch));
    const int watch = root.fileDescriptor() == -1 ? -1 : watches_.add(root.fileDescriptor());
    if (watch == -1) {
        noteShortage(errno);
        return;
    }
    root_ = watch;
    batch_.setWhole(isFolder && !path_.ends_with('/') ? path_ + '/' : path_);
    enter(root_, FolderTable::none, path_, Reason::wholePass);
    if (isFolder)
        follow({.folder = root_, .handle = std::move(root)}, Reason::wholePass);
}

void FolderTree::look(int parent, std::string_view name) {
    const int descriptor = openFolder(parent);
    if (descriptor == -1)
        return;
    if (auto entered = meet(parent, descriptor, std::string(name), Reason::change))
        follow(std::move(*entered), Reason::change);
}

void FolderTree::follow(Entered first, Reason reason) {
    FolderWalk walk;
    walk.enter(first.folder, std::move(first.handle));
    while (const auto found = walk.next()) {
        const int descriptor =
            found->parentDescriptor != -1 ? found->parentDescriptor : openFolder(found->parent);
        if (descriptor == -1) {
            walk.leave();
        } else if (auto entered = meet(found->parent, descriptor, found->name, reason)) {
            walk.enter(entered->folder, std::move(entered->handle));
        }
    }
    for (const auto& [folder, code] : walk.failures())
        noteUnread(folder, code);
}

/// What has the name in the open folder, if it is a folder that is to be listed. By now it is
/// watched.
std::optional<FolderTree::Entered> FolderTree::meet(int parent, int descriptor,
                                                    const std::string& name, Reason reason) {
    FileHandle handle(openat(descriptor, name.c_str(), toList));
    const int folder = handle.fileDescriptor() == -1 ? -1 : watches_.add(handle.fileDescriptor());
    if (folder == -1) {
        noteUnmet(parent, descriptor, errno);
        return std::nullopt;
    }
    if (!enter(folder, parent, name, reason) || leafFolders_.contains(handle.fileDescriptor()))
        return std::nullopt;
    return Entered{.folder = folder, .handle = std::move(handle)};
}

/// Puts the folder into the table where it was met; whether it is to be listed.
bool FolderTree::enter(int folder, int parent, const std::string& name, Reason reason) {
    auto* const known = table_.find(folder);
    if (known == nullptr) {
        watches_.use(folder, user_);
        table_.insert(folder, parent, name);
        table_.find(folder)->pass = pass_;
        if (reason == Reason::change)
            noteChange(folder, {});
        return true;
    }
    const bool isFirstMeeting =
        std::exchange(known->pass, pass_) != pass_ && reason == Reason::wholePass;
    const bool isElsewhere = known->parent != parent || known->name != name;
    if (isElsewhere && (isFirstMeeting || !isMountedTwice(folder)))
        move(folder, parent, name, reason);
    return isFirstMeeting;
}

/// What is met at a second place has moved there, maybe since the pass met it at the first, and
/// there need be no record of that; or it is at both, and maybe above itself.
bool FolderTree::isMountedTwice(int folder) {
    return folder == root_ || placeOf(folder) == Place::here;
}

void FolderTree::move(int folder, int parent, const std::string& name, Reason reason) {
    if (table_.isWithin(parent, folder)) { // what would explain it is yet to be seen
        unsettled_.insert(parent);
        return;
    }
    table_.move(folder, parent, name);
    if (reason == Reason::change)
        noteChange(folder, {});
}

void FolderTree::noteChange(int folder, std::string_view name) {
    if (changes_.isEmpty())
        batch_.comeDue();
    changes_.add(folder, name);
    if (!changes_.isFull())
        return;
    changes_.takeAll();
    batch_.addWhole();
}

void FolderTree::reportChanges() {
    for (const auto& [folder, names] : changes_.takeAll())
        report(folder, names);
}

void FolderTree::report(int folder, const FolderChanges::Names& names) {
    if (names.empty() || batch_.isFull())
        return; // a path deep in the tree is not for nothing
    const auto path = table_.path(folder);
    for (const auto& name : names) {
        auto changed = path;
        appendName(changed, name);
        batch_.add(std::move(changed));
    }
}

/// As of the ledger; where it fails, the folder is noted.
int FolderTree::openFolder(int folder) {
    const int descriptor = watches_.openFolder(folder, [&] { return table_.path(folder); });
    if (descriptor == -1)
        noteUnread(folder, errno);
    return descriptor;
}

void FolderTree::noteUnread(int folder, int code) {
    if (noteShortage(code))
        return;
    if (code != EACCES) {
        unsettled_.insert(folder);
        return;
    }
    locked_.insert(folder);
    isOutOfReach_ = faccessat(AT_FDCWD, path_.c_str(), F_OK, AT_EACCESS) != 0 && errno == EACCES;
}

/// Where there is no such folder (any more), a record says so, or says what is there instead. One
/// that may not be read has a record when it may; of one in a folder that may not be searched, that
/// folder has it.
void FolderTree::noteUnmet(int parent, int descriptor, int code) {
    if (isAbsence(code) || noteShortage(code))
        return;
    if (code != EACCES) {
        unsettled_.insert(parent);
    } else if (faccessat(descriptor, ".", X_OK, AT_EACCESS) != 0) {
        locked_.insert(parent);
    }
}

bool FolderTree::noteShortage(int code) {
    if (!isShortage(code))
        return false;
    if (!std::exchange(isShortOfWatches_, true))
        batch_.addWhole();
    if (code == ENOSPC && !std::exchange(hasLoggedLimit_, true)) {
        log("Not all folders below " + path_ +
            " are watched: the limit fs.inotify.max_user_watches is reached.");
    }
    return true;
}

void FolderTree::remove(int folder) {
    if (!contains(folder))
        return;
    if (!changes_.isEmpty()) {
        for (const int going : table_.subtree(folder))
            report(going, changes_.take(going));
    }
    for (const int gone : table_.remove(folder))
        watches_.giveUp(gone, user_);
}

// Whatever was met has been moved to a parent that was met as well.
void FolderTree::removeUnmet(unsigned pass) {
    for (const int folder : table_.allBut(pass))
        remove(folder);
}

} // namespace Platform
