#include "Platform/Linux/Files/FileSystemEvents/TreeFollower.h"

#include <algorithm>
#include <utility>

namespace Platform {
namespace {

constexpr std::chrono::seconds shortestRetryDelay(1);
constexpr std::chrono::seconds longestRetryDelay(64);

bool isWithin(std::string_view path, std::string_view ancestor) {
    return path.starts_with(ancestor) && (path.size() == ancestor.size() ||
                                          ancestor.ends_with('/') || path[ancestor.size()] == '/');
}

} // namespace

TreeFollower::TreeFollower(std::string root, WatchLedger& watches,
                           std::shared_ptr<EventBatch> batch)
    : rootPath_(std::move(root))
    , watches_(watches)
    , batch_(std::move(batch))
    , folders_(rootPath_, watches_, *this, *batch_) {}

void TreeFollower::handle(const InotifyRecord& record) {
    if (path_->isConcernedBy(record))
        loseCount();
    if (!folders_.contains(record.watch))
        return;
    if ((record.events & (IN_ISDIR | IN_IGNORED | IN_MOVE_SELF)) != 0)
        folders_.noteMovement();
    if (record.name.empty()) {
        handleOwn(record);
    } else {
        handleEntry(record);
    }
    if (folders_.isSettlementDue() || folders_.isOutOfReach())
        batch_->comeDue();
}

void TreeFollower::handleOwn(const InotifyRecord& record) {
    const bool isRoot = record.watch == folders_.root();
    if ((record.events & IN_IGNORED) != 0) { // the folder is no more
        folders_.remove(record.watch);
    } else if ((record.events & IN_UNMOUNT) != 0 || // uncovers another folder
               (isRoot && (record.events & (IN_MOVE_SELF | IN_DELETE_SELF)) != 0)) {
        loseCount();
    } else if ((record.events & IN_MOVE_SELF) != 0) {
        folders_.checkPlace(record.watch);
    } else if (isRoot) { // of every other folder its parent has a record as well
        batch_->add(rootPath_);
        if ((record.events & IN_ATTRIB) != 0)
            folders_.noteAccess();
    }
}

void TreeFollower::handleEntry(const InotifyRecord& record) {
    folders_.noteChange(record.watch, record.name);
    if ((record.events & IN_ISDIR) == 0)
        return;
    if ((record.events & (IN_CREATE | IN_MOVED_TO | IN_ATTRIB)) != 0) // readable only now, maybe
        folders_.look(record.watch, record.name);
    if ((record.events & (IN_MOVED_TO | IN_ATTRIB)) != 0)
        folders_.noteAccess();
    if ((record.events & IN_MOVED_FROM) != 0)
        folders_.noteDeparture(record.watch, record.name);
}

void TreeFollower::handleMount(std::string_view path) {
    if (isWithin(path, rootPath_) || isWithin(rootPath_, path))
        loseCount();
}

void TreeFollower::loseCount() {
    hasLostCount_ = true;
    batch_->comeDue();
}

void TreeFollower::catchUp() {
    makeWatchesRight();
    folders_.reportChanges();
}

void TreeFollower::makeWatchesRight() {
    if (!isWholePassDue()) {
        if (folders_.isSettlementDue())
            folders_.settle();
        if (!folders_.isOutOfReach())
            return;
    }
    const bool hadRoot = folders_.root() != FolderTable::none;
    passOver();
    if (hadRoot || folders_.root() != FolderTable::none)
        batch_->addWhole();
}

bool TreeFollower::isWholePassDue() const {
    return hasLostCount_ ||
           ((folders_.isShortOfWatches() || path_->isBlind()) && Clock::now() >= nextRetry_);
}

void TreeFollower::passOver() {
    hasLostCount_ = false;
    path_ = std::make_unique<WatchedPath>(rootPath_, watches_, *this); // before the former goes
    folders_.passOver(path_->takeFolder().fileDescriptor(), path_->itemName());
    if (!folders_.isShortOfWatches() && !path_->isBlind()) {
        retryDelay_ = {};
        return;
    }
    retryDelay_ =
        std::clamp<Clock::duration>(retryDelay_ * 2, shortestRetryDelay, longestRetryDelay);
    nextRetry_ = Clock::now() + retryDelay_;
    if (path_->isBlind()) // there is nothing else that could lead to another batch
        batch_->comeDueAfter(retryDelay_);
}

} // namespace Platform
