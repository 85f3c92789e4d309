#include "Platform/Linux/Settings/FileWatch.h"

#include <array>
#include <cerrno>
#include <utility>

namespace Platform {
namespace {

namespace fs = std::filesystem;

// Of a folder on the way to a file: nothing but its own end, so that what goes on in a busy one
// wakes nobody.
constexpr std::uint32_t folderGone = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t folderAppeared = IN_CREATE | IN_MOVED_TO;
constexpr std::uint32_t fileChanged =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_CLOSE_WRITE | IN_ATTRIB;

constexpr std::uint32_t concernsAll = folderGone | IN_UNMOUNT | IN_IGNORED | IN_Q_OVERFLOW;

} // namespace

FileWatch::FileWatch(Inotify inotify, std::function<void()> changed)
    : changed_(std::move(changed))
    , inotify_(std::move(inotify)) {}

std::shared_ptr<FileWatch> FileWatch::start(const Strand& strand, const std::set<fs::path>& files,
                                            std::function<void()> changed) {
    auto inotify = Inotify::make(strand);
    if (!inotify)
        return nullptr;
    auto watch = std::make_shared<FileWatch>(std::move(*inotify), std::move(changed));
    for (const auto& file : files)
        watch->watch(file);
    watch->waitForEvents();
    return watch;
}

void FileWatch::watch(const fs::path& file) {
    auto folder = file.root_path();
    add(folder, folderGone);
    for (const auto& name : file.parent_path().relative_path()) {
        const auto next = folder / name;
        if (!add(next, folderGone)) {
            add(folder, folderAppeared);
            names_.insert(name);
            if (!add(next, folderGone)) // it may have appeared just before that
                return;
        }
        folder = next;
    }
    add(folder, fileChanged);
    names_.insert(file.filename());
}

/// False where there is no such folder. One that may not be watched is passed over.
bool FileWatch::add(const fs::path& folder, std::uint32_t events) {
    return inotify_.add(folder.c_str(), events | IN_MASK_ADD | IN_ONLYDIR) != -1 ||
           (errno != ENOENT && errno != ENOTDIR);
}

void FileWatch::waitForEvents() {
    inotify_.waitForRecords([weak = weak_from_this()] {
        const auto self = weak.lock();
        if (!self)
            return;
        if (self->drain()) {
            self->changed_();
        } else {
            self->waitForEvents();
        }
    });
}

/// Empties the event queue; whether any of it concerns the files.
bool FileWatch::drain() {
    std::array<char, 4096> buffer;
    bool concerns = false;
    for (auto records = inotify_.read(buffer); !records.isEmpty();
         records = inotify_.read(buffer)) {
        while (const auto record = records.next())
            concerns |= (record->events & concernsAll) != 0 || names_.contains(record->name);
    }
    return concerns;
}

} // namespace Platform
