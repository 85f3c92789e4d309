#include "Platform/Linux/Settings/FileWatch.h"

#include "Platform/Linux/Files/Inotify/InotifyRecords.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <string_view>
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

FileWatch::FileWatch(const Strand& strand, std::function<void()> changed)
    : changed_(std::move(changed))
    , descriptor_(strand) {}

std::shared_ptr<FileWatch> FileWatch::start(const Strand& strand, const std::set<fs::path>& files,
                                            std::function<void()> changed) {
    auto watch = std::make_shared<FileWatch>(strand, std::move(changed));
    const int descriptor = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (descriptor == -1)
        return watch;
    asio::error_code failure;
    watch->descriptor_.assign(descriptor, failure);
    if (failure) {
        close(descriptor);
        return watch;
    }
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
    return inotify_add_watch(descriptor_.native_handle(), folder.c_str(),
                             events | IN_MASK_ADD | IN_ONLYDIR) != -1 ||
           (errno != ENOENT && errno != ENOTDIR);
}

void FileWatch::waitForEvents() {
    descriptor_.async_wait(asio::posix::stream_descriptor::wait_read,
                           [weak = weak_from_this()](asio::error_code failure) {
                               const auto self = weak.lock();
                               if (failure || !self)
                                   return;
                               if (self->drain()) {
                                   self->changed_();
                               } else {
                                   self->waitForEvents();
                               }
                           });
}

/// Empties the event queue; whether it told of anything that concerns the files.
bool FileWatch::drain() {
    std::array<char, 4096> buffer;
    bool concerns = false;
    ssize_t count = 0;
    // NOLINTNEXTLINE(clang-analyzer-unix.BlockInCriticalSection): the descriptor does not block
    while ((count = read(descriptor_.native_handle(), buffer.data(), buffer.size())) > 0) {
        forEachInotifyRecord({buffer.data(), static_cast<std::size_t>(count)},
                             [&](const inotify_event& record, std::string_view name) {
                                 concerns |=
                                     (record.mask & concernsAll) != 0 || names_.contains(name);
                             });
    }
    return concerns;
}

} // namespace Platform
