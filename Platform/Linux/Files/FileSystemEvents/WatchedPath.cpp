#include "Platform/Linux/Files/FileSystemEvents/WatchedPath.h"

#include "Platform/Linux/Files/FileSystemEvents/WatchLedger.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace Platform {
namespace {

constexpr std::uint32_t ownEnd = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t disappearance = IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO; // or replacement
constexpr std::uint32_t appearance = IN_CREATE | IN_MOVED_TO;
constexpr std::uint32_t concernsAll = ownEnd | IN_UNMOUNT | IN_IGNORED;

constexpr int toLookFrom = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

} // namespace

WatchedPath::WatchedPath(std::string_view path, WatchLedger& watches, TreeFollower& user)
    : watches_(watches)
    , user_(user) {
    goAlong(path);
    for (auto& step : steps_)
        step.folder = FileHandle(-1);
}

WatchedPath::~WatchedPath() {
    for (const auto& step : steps_) {
        if (step.watch != -1)
            watches_.giveUp(step.watch, user_);
    }
}

void WatchedPath::goAlong(std::string_view path) {
    steps_.push_back({.folder = FileHandle(open("/", toLookFrom)), .name = {}});
    while (!path.empty()) {
        const auto end = std::min(path.find('/'), path.size());
        const std::string_view name = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        if (name.empty())
            continue;
        if (!steps_.back().name.empty() && !goOn())
            return;
        steps_.back().name = name;
    }
    if (steps_.back().name.empty()) {
        folder_ = std::move(steps_.back().folder);
    } else {
        watchItem();
    }
}

/// Adds the next folder to the steps. Where it is missing, the last step's may itself go, of which
/// it has no record while a process works in it.
bool WatchedPath::goOn() {
    const auto next = [this] {
        auto& last = steps_.back();
        return FileHandle(openat(last.folder.fileDescriptor(), last.name.c_str(), toLookFrom));
    };
    addLast(ownEnd);
    auto found = next();
    if (found.fileDescriptor() == -1) {
        addWhatMayRelease(errno);
        found = next();
    }
    const bool isFound = found.fileDescriptor() != -1;
    if (isFound) {
        isBlind_ = false;
        steps_.push_back({.folder = std::move(found), .name = {}});
    }
    return isFound;
}

void WatchedPath::watchItem() {
    auto& last = steps_.back();
    addLast(ownEnd | disappearance);
    if (faccessat(last.folder.fileDescriptor(), last.name.c_str(), R_OK,
                  AT_EACCESS | AT_SYMLINK_NOFOLLOW) != 0)
        addWhatMayRelease(errno);
    itemName_ = last.name;
    folder_ = std::move(last.folder);
}

void WatchedPath::addWhatMayRelease(int failure) {
    const std::uint32_t access = failure == EACCES ? IN_ATTRIB : 0U;
    isBlind_ = !add(steps_.back(), appearance | access);
    if (steps_.size() > 1)
        add(steps_[steps_.size() - 2], IN_DELETE | access);
}

void WatchedPath::addLast(std::uint32_t events) {
    if (!add(steps_.back(), events) && steps_.size() > 1)
        add(steps_[steps_.size() - 2], disappearance | IN_CREATE | IN_ATTRIB);
}

bool WatchedPath::add(Step& step, std::uint32_t events) {
    const int watch = watches_.add(step.folder.fileDescriptor(), events);
    if (watch == -1)
        return false;
    if (step.watch == -1)
        watches_.use(watch, user_);
    step.watch = watch;
    step.events |= events;
    return true;
}

bool WatchedPath::isConcernedBy(const InotifyRecord& record) const {
    return std::ranges::any_of(steps_, [&](const Step& step) {
        return step.watch == record.watch && ((record.events & concernsAll) != 0 ||
                                              ((record.events & step.events) != 0 &&
                                               (record.name.empty() || record.name == step.name)));
    });
}

} // namespace Platform
