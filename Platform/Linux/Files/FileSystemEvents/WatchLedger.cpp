#include "Platform/Linux/Files/FileSystemEvents/WatchLedger.h"

#include "Platform/Linux/Files/LongPath.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>

namespace Platform {
namespace {

// A file that is kept open shows by IN_MODIFY, one that is written through a mapping when closed.
constexpr std::uint32_t changes = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MODIFY |
                                  IN_CLOSE_WRITE | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF |
                                  IN_EXCL_UNLINK;

constexpr std::size_t bufferSize = std::size_t{1} << 16;
constexpr std::ptrdiff_t mostRemovedAtOnce = 2048;
constexpr std::size_t mostOpenFolders = 8;

} // namespace

std::unique_ptr<WatchLedger> WatchLedger::make(const asio::any_io_executor& executor) {
    auto inotify = Inotify::make(executor);
    return inotify ? std::make_unique<WatchLedger>(std::move(*inotify)) : nullptr;
}

WatchLedger::WatchLedger(Inotify inotify)
    : inotify_(std::move(inotify))
    , buffer_(bufferSize) {}

int WatchLedger::add(int openItem) {
    return noteUnused(inotify_.add(openItem, changes));
}

int WatchLedger::add(int openItem, std::uint32_t events) {
    return noteUnused(inotify_.add(openItem, events | IN_MASK_ADD));
}

int WatchLedger::noteUnused(int watch) {
    if (watch != -1 && !users_.contains(watch))
        unused_.push_back(watch);
    return watch;
}

void WatchLedger::use(int watch, TreeFollower& tree) {
    users_.emplace(watch, &tree);
    if (!unused_.empty() && unused_.back() == watch)
        unused_.pop_back();
}

void WatchLedger::giveUp(int watch, TreeFollower& tree) {
    const auto [begin, end] = users_.equal_range(watch);
    const auto found =
        std::find_if(begin, end, [&](const auto& user) { return user.second == &tree; });
    if (found == end)
        return;
    users_.erase(found);
    if (!users_.contains(watch))
        unused_.push_back(watch);
}

std::vector<TreeFollower*> WatchLedger::users(int watch) const {
    std::vector<TreeFollower*> trees;
    const auto [begin, end] = users_.equal_range(watch);
    for (auto user = begin; user != end; ++user)
        trees.push_back(user->second);
    return trees;
}

void WatchLedger::removeUnused() {
    const auto count = std::min<std::ptrdiff_t>(std::ssize(unused_), mostRemovedAtOnce);
    for (auto watch = unused_.end() - count; watch != unused_.end(); ++watch) {
        if (!users_.contains(*watch))
            inotify_.remove(*watch);
    }
    unused_.erase(unused_.end() - count, unused_.end());
    if (!unused_.empty())
        return;
    unused_.shrink_to_fit();
    constexpr std::size_t emptiest = 8;
    if (users_.size() < users_.bucket_count() / emptiest)
        users_.rehash(0);
}

int WatchLedger::openFolder(int watch, const std::function<std::string()>& path) {
    const auto known = std::ranges::find(folders_, watch, &std::pair<int, FileHandle>::first);
    if (known != folders_.end())
        return known->second.fileDescriptor();
    auto opened = openLongPath(path(), O_PATH | O_DIRECTORY | O_NOFOLLOW);
    const int found = opened.fileDescriptor() == -1 ? -1 : add(opened.fileDescriptor());
    if (found != watch) {
        if (found != -1)
            errno = ESTALE;
        return -1;
    }
    if (folders_.size() == mostOpenFolders)
        folders_.pop_front();
    return folders_.emplace_back(watch, std::move(opened)).second.fileDescriptor();
}

void WatchLedger::waitForRecords(std::function<void()> handler) {
    inotify_.waitForRecords(std::move(handler));
}

InotifyRecords WatchLedger::read() {
    return inotify_.read(buffer_);
}

} // namespace Platform
