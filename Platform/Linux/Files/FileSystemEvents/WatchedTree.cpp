#include "Platform/Linux/Files/FileSystemEvents/WatchedTree.h"

#include "Platform/Linux/Files/FileSystemEvents/FolderAccess.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace Platform {
namespace {

constexpr std::chrono::seconds shortestRetryDelay(1);
constexpr std::chrono::seconds longestRetryDelay(64);

/// Whether the system may allow later what it does not now.
bool isShortage(int code) {
    return code == ENOSPC || code == ENOMEM || code == EMFILE || code == ENFILE;
}

} // namespace

WatchedTree::WatchedTree(std::string root, Watches& watches, std::shared_ptr<EventBatch> batch)
    : rootPath_(std::move(root))
    , watches_(watches)
    , batch_(std::move(batch)) {}

WatchedTree::~WatchedTree() {
    giveUp(folders_.removeAllBut(++pass_)); // which came by none
}

void WatchedTree::start() {
    passOver();
    if (isShortOfWatches_)
        batch_->addWhole();
}

void WatchedTree::handle(const inotify_event& record, std::string_view name) {
    if ((record.mask & IN_IGNORED) != 0) { // the folder is no more
        giveUp(folders_.remove(record.wd));
        return;
    }
    if ((record.mask & IN_MOVE_SELF) != 0)
        checkPlace(record.wd);
    // A file system that leaves uncovers another folder, and another root may have come.
    if ((record.mask & IN_UNMOUNT) != 0 ||
        (record.wd == root_ && (record.mask & IN_DELETE_SELF) != 0))
        loseCount();
    if ((record.mask & (IN_MOVE_SELF | IN_UNMOUNT | IN_DELETE_SELF)) != 0)
        return;
    auto path = folders_.path(record.wd);
    if (name.empty()) {
        // Of every other folder its parent tells as well.
        if (record.wd == root_)
            batch_->add(std::move(path));
        return;
    }
    const auto parentPath = path;
    appendName(path, name);
    batch_->add(std::move(path));
    if ((record.mask & IN_ISDIR) != 0 &&
        (record.mask & (IN_CREATE | IN_MOVED_TO | IN_ATTRIB)) != 0) // it may be readable only now
        followSubfolder(record.wd, parentPath, name);
}

void WatchedTree::loseCount() {
    hasLostCount_ = true;
    batch_->addWhole();
}

void WatchedTree::recover() {
    const bool isRetry = isShortOfWatches_ && Clock::now() >= nextRetry_;
    if (!hasLostCount_ && !isRetry)
        return;
    hasLostCount_ = false;
    passOver();
    batch_->addWhole();
}

void WatchedTree::passOver() {
    ++pass_;
    root_ = FolderTable::none;
    isShortOfWatches_ = false;
    follow({.parent = FolderTable::none, .parentPathLength = 0, .name = rootPath_}, {},
           Reason::wholePass);
    if (!isShortOfWatches_) {
        giveUp(folders_.removeAllBut(pass_));
        retryDelay_ = {};
        return;
    }
    // What the pass did not get to may well be there still.
    retryDelay_ =
        std::clamp<Clock::duration>(retryDelay_ * 2, shortestRetryDelay, longestRetryDelay);
    nextRetry_ = Clock::now() + retryDelay_;
}

void WatchedTree::followSubfolder(int parent, const std::string& path, std::string_view name) {
    const bool wasShort = isShortOfWatches_;
    follow({.parent = parent, .parentPathLength = path.size(), .name = std::string(name)}, path,
           Reason::newFolder);
    if (isShortOfWatches_ && !wasShort)
        batch_->addWhole();
}

/// Depth first, with a list in place of a stack of calls. `path` always begins with the path of
/// the parent of whatever is taken from the list next.
void WatchedTree::follow(Candidate first, std::string path, Reason reason) {
    std::vector<Candidate> candidates;
    candidates.push_back(std::move(first));
    while (!candidates.empty()) {
        const auto candidate = std::move(candidates.back());
        candidates.pop_back();
        path.resize(candidate.parentPathLength);
        if (path.empty()) {
            path = candidate.name;
        } else {
            appendName(path, candidate.name);
        }
        const int folder = watch(candidate, path);
        if (folder != FolderTable::none && place(folder, candidate, path, reason))
            list(path, folder, candidates);
    }
}

void WatchedTree::list(const std::string& path, int folder, std::vector<Candidate>& found) {
    noteFailure(forEachSubfolder(path, [&](std::string_view name) {
        found.push_back(
            {.parent = folder, .parentPathLength = path.size(), .name = std::string(name)});
    }));
}

int WatchedTree::watch(const Candidate& candidate, const std::string& path) {
    const bool isRoot = candidate.parent == FolderTable::none;
    const int folder = watches_.add(path, isRoot ? Watches::Item::anything : Watches::Item::folder);
    if (folder == FolderTable::none)
        noteFailure(errno);
    return folder;
}

/// Enters the folder where it was met; whether it is to be listed.
bool WatchedTree::place(int folder, const Candidate& candidate, const std::string& path,
                        Reason reason) {
    if (candidate.parent == FolderTable::none)
        root_ = folder;
    auto* const known = folders_.find(folder);
    if (known == nullptr) {
        watches_.use(folder, *this);
        folders_.insert(folder, candidate.parent, candidate.name);
        folders_.find(folder)->pass = pass_;
        if (reason == Reason::newFolder)
            batch_->add(path + '/');
        return true;
    }
    // Mounted a second time within the tree: met already, and maybe above itself.
    if (reason == Reason::wholePass && std::exchange(known->pass, pass_) == pass_)
        return false;
    if (known->parent != candidate.parent || known->name != candidate.name)
        move(folder, candidate, path, reason);
    return reason == Reason::wholePass;
}

void WatchedTree::move(int folder, const Candidate& candidate, const std::string& path,
                       Reason reason) {
    if (folders_.isWithin(candidate.parent, folder)) { // records yet to come would explain it
        loseCount();
        return;
    }
    folders_.move(folder, candidate.parent, candidate.name);
    if (reason == Reason::newFolder)
        batch_->add(path + '/');
}

void WatchedTree::noteFailure(int code) {
    isShortOfWatches_ = isShortOfWatches_ || isShortage(code);
}

/// A folder that moved is either where the table already says, or it is out of the tree for all
/// that is known: if it comes back, or came back, the record of that makes it a new one.
void WatchedTree::checkPlace(int folder) {
    const auto path = folders_.path(folder);
    if (watches_.add(path, Watches::Item::anything) == folder)
        return;
    if (folder == root_) {
        loseCount();
    } else {
        giveUp(folders_.remove(folder));
    }
}

void WatchedTree::giveUp(const std::vector<int>& folders) {
    for (const int folder : folders)
        watches_.giveUp(folder, *this);
}

} // namespace Platform
