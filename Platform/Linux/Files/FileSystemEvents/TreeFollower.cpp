#include "Platform/Linux/Files/FileSystemEvents/TreeFollower.h"

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

TreeFollower::TreeFollower(std::string root, WatchLedger& watches,
                           std::shared_ptr<EventBatch> batch)
    : rootPath_(std::move(root))
    , watches_(watches)
    , batch_(std::move(batch)) {}

TreeFollower::~TreeFollower() {
    giveUp(folders_.removeAllBut(++pass_)); // which came by none
}

void TreeFollower::start() {
    passOver();
    if (isShortOfWatches_)
        batch_->addWhole();
}

void TreeFollower::handle(const InotifyRecord& record) {
    if ((record.events & IN_IGNORED) != 0) { // the folder is no more
        giveUp(folders_.remove(record.watch));
        return;
    }
    if ((record.events & IN_MOVE_SELF) != 0)
        checkPlace(record.watch);
    // A file system that leaves uncovers another folder, and another root may have come.
    if ((record.events & IN_UNMOUNT) != 0 ||
        (record.watch == root_ && (record.events & IN_DELETE_SELF) != 0))
        loseCount();
    if ((record.events & (IN_MOVE_SELF | IN_UNMOUNT | IN_DELETE_SELF)) != 0)
        return;
    auto path = folders_.path(record.watch);
    if (record.name.empty()) {
        // Of every other folder its parent has a record as well.
        if (record.watch == root_)
            batch_->add(std::move(path));
        return;
    }
    const auto parentPath = path;
    appendName(path, record.name);
    batch_->add(std::move(path));
    if ((record.events & IN_ISDIR) != 0 &&
        (record.events & (IN_CREATE | IN_MOVED_TO | IN_ATTRIB)) != 0) // it may be readable only now
        followSubfolder(record.watch, parentPath, record.name);
}

void TreeFollower::loseCount() {
    hasLostCount_ = true;
    batch_->addWhole();
}

void TreeFollower::recover() {
    const bool isRetry = isShortOfWatches_ && Clock::now() >= nextRetry_;
    if (!hasLostCount_ && !isRetry)
        return;
    hasLostCount_ = false;
    passOver();
    batch_->addWhole();
}

void TreeFollower::passOver() {
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

void TreeFollower::followSubfolder(int parent, const std::string& path, std::string_view name) {
    const bool wasShort = isShortOfWatches_;
    follow({.parent = parent, .parentPathLength = path.size(), .name = std::string(name)}, path,
           Reason::newFolder);
    if (isShortOfWatches_ && !wasShort)
        batch_->addWhole();
}

/// Depth first, with a list in place of a stack of calls. `path` always begins with the path of
/// the parent of whatever is taken from the list next.
void TreeFollower::follow(Candidate first, std::string path, Reason reason) {
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

void TreeFollower::list(const std::string& path, int folder, std::vector<Candidate>& found) {
    noteFailure(forEachSubfolder(path, [&](std::string_view name) {
        found.push_back(
            {.parent = folder, .parentPathLength = path.size(), .name = std::string(name)});
    }));
}

int TreeFollower::watch(const Candidate& candidate, const std::string& path) {
    const bool isRoot = candidate.parent == FolderTable::none;
    const int folder =
        watches_.add(path, isRoot ? WatchLedger::Item::anything : WatchLedger::Item::folder);
    if (folder == FolderTable::none)
        noteFailure(errno);
    return folder;
}

/// Enters the folder where it was met; whether it is to be listed.
bool TreeFollower::place(int folder, const Candidate& candidate, const std::string& path,
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

void TreeFollower::move(int folder, const Candidate& candidate, const std::string& path,
                        Reason reason) {
    if (folders_.isWithin(candidate.parent, folder)) { // records yet to come would explain it
        loseCount();
        return;
    }
    folders_.move(folder, candidate.parent, candidate.name);
    if (reason == Reason::newFolder)
        batch_->add(path + '/');
}

void TreeFollower::noteFailure(int code) {
    isShortOfWatches_ = isShortOfWatches_ || isShortage(code);
}

/// A folder that moved is either where the table already says, or it is out of the tree for all
/// that is known: if it comes back, or came back, the record of that makes it a new one.
void TreeFollower::checkPlace(int folder) {
    const auto path = folders_.path(folder);
    if (watches_.add(path, WatchLedger::Item::anything) == folder)
        return;
    if (folder == root_) {
        loseCount();
    } else {
        giveUp(folders_.remove(folder));
    }
}

void TreeFollower::giveUp(const std::vector<int>& folders) {
    for (const int folder : folders)
        watches_.giveUp(folder, *this);
}

} // namespace Platform
