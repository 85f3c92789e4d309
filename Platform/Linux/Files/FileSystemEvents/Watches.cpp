#include "Platform/Linux/Files/FileSystemEvents/Watches.h"

#include "Platform/Linux/Files/FileSystemEvents/FolderAccess.h"
#include "Platform/Log.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <utility>

namespace Platform {
namespace {

// A file that is kept open tells by IN_MODIFY, one that is written through a mapping when closed.
constexpr std::uint32_t changes = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MODIFY |
                                  IN_CLOSE_WRITE | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF |
                                  IN_EXCL_UNLINK;

constexpr std::size_t bufferSize = std::size_t{1} << 16;
constexpr std::ptrdiff_t mostRemovedAtOnce = 2048;

} // namespace

std::unique_ptr<Watches> Watches::make() {
    FileHandle inotify(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (inotify.fileDescriptor() == -1)
        return nullptr;
    return std::make_unique<Watches>(std::move(inotify));
}

Watches::Watches(FileHandle inotify)
    : inotify_(std::move(inotify))
    , buffer_(bufferSize) {}

int Watches::add(const std::string& path, Item item) {
    const std::uint32_t events = item == Item::folder ? changes | IN_ONLYDIR : changes;
    const int watch = addInotifyWatch(fileDescriptor(), path, events);
    if (watch != -1) {
        if (!users_.contains(watch))
            unused_.push_back(watch);
    } else if (errno == ENOSPC && !std::exchange(hasToldOfLimit_, true)) {
        log("Not all folders below " + path +
            " are watched: the limit fs.inotify.max_user_watches is reached.");
        errno = ENOSPC;
    }
    return watch;
}

void Watches::use(int watch, WatchedTree& tree) {
    users_.emplace(watch, &tree);
    if (!unused_.empty() && unused_.back() == watch)
        unused_.pop_back();
}

void Watches::giveUp(int watch, WatchedTree& tree) {
    const auto [begin, end] = users_.equal_range(watch);
    const auto found =
        std::find_if(begin, end, [&](const auto& user) { return user.second == &tree; });
    if (found == end)
        return;
    users_.erase(found);
    if (!users_.contains(watch))
        unused_.push_back(watch);
}

std::vector<WatchedTree*> Watches::users(int watch) const {
    std::vector<WatchedTree*> trees;
    const auto [begin, end] = users_.equal_range(watch);
    for (auto user = begin; user != end; ++user)
        trees.push_back(user->second);
    return trees;
}

void Watches::removeUnused() {
    const auto count = std::min<std::ptrdiff_t>(std::ssize(unused_), mostRemovedAtOnce);
    for (auto watch = unused_.end() - count; watch != unused_.end(); ++watch) {
        if (!users_.contains(*watch))
            inotify_rm_watch(fileDescriptor(), *watch); // fails where the item went first
    }
    unused_.erase(unused_.end() - count, unused_.end());
    if (unused_.empty())
        unused_.shrink_to_fit();
}

std::span<const char> Watches::read() {
    // NOLINTNEXTLINE(clang-analyzer-unix.BlockInCriticalSection): the descriptor does not block
    const auto count = ::read(fileDescriptor(), buffer_.data(), buffer_.size());
    return {buffer_.data(), count > 0 ? static_cast<std::size_t>(count) : 0};
}

} // namespace Platform
