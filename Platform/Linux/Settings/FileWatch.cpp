#include "Platform/Linux/Settings/FileWatch.h"

#include "Platform/Linux/Loops/WorkerPool.h"

#include <array>
#include <cerrno>
#include <list>
#include <utility>

namespace Platform {
namespace {

namespace fs = std::filesystem;

// Of a folder or a link on the way to a file: nothing but its own end, so that what goes on in a
// busy folder wakes nobody.
constexpr std::uint32_t itemGone = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t entryAppeared = IN_CREATE | IN_MOVED_TO;
constexpr std::uint32_t entryChanged = entryAppeared | IN_DELETE | IN_MOVED_FROM;
constexpr std::uint32_t fileChanged = entryChanged | IN_CLOSE_WRITE | IN_ATTRIB;

constexpr std::uint32_t concernsAll = itemGone | IN_UNMOUNT | IN_IGNORED | IN_Q_OVERFLOW;

/// What is left of the way to a file, link by link.
class Way {
public:
    explicit Way(const fs::path& path) { prepend(path); }

    bool isAtEnd() const { return names_.empty(); }

    fs::path next() {
        auto name = std::move(names_.front());
        names_.pop_front();
        return name;
    }

    /// False for a chain without end.
    bool follow(const fs::path& target) {
        constexpr int mostLinks = 40; // as many as the system follows
        prepend(target);
        return ++links_ <= mostLinks;
    }

private:
    void prepend(const fs::path& path) {
        const auto first = names_.begin();
        for (const auto& name : path.relative_path()) {
            if (!name.empty() && name != ".")
                names_.insert(first, name);
        }
    }

    std::list<fs::path> names_;
    int links_ = 0;
};

} // namespace

FileWatch::FileWatch(DispatchQueue queue, Inotify inotify, std::function<void()> changed)
    : queue_(std::move(queue))
    , changed_(std::move(changed))
    , inotify_(std::move(inotify)) {}

std::shared_ptr<FileWatch> FileWatch::make(const DispatchQueue& queue,
                                           std::function<void()> changed) {
    auto inotify = Inotify::make(workerExecutor());
    return inotify ? std::make_shared<FileWatch>(queue, std::move(*inotify), std::move(changed))
                   : nullptr;
}

void FileWatch::watch(const std::set<fs::path>& files) {
    for (const int watch : std::exchange(watches_, {}))
        inotify_.remove(watch);
    names_.clear();
    for (const auto& file : files)
        watchFile(file);
    if (!isWaiting_)
        waitForEvents();
}

// Each item is watched before the look at what it is.
void FileWatch::watchFile(const fs::path& file) {
    Way way(file);
    auto folder = file.root_path();
    add(folder, itemGone);
    while (!way.isAtEnd()) {
        const auto name = way.next();
        const auto item = folder / name;
        if (way.isAtEnd())
            addNamed(folder, name, fileChanged);
        if (!addWay(item)) {
            addNamed(folder, name, entryAppeared);
            if (!addWay(item)) // it may have appeared just before that
                break;
        }
        std::error_code isNoLink;
        const auto target = fs::read_symlink(item, isNoLink);
        if (isNoLink) {
            folder = name == ".." ? folder.parent_path() : item;
        } else if (target.is_absolute()) {
            folder = target.root_path();
        }
        if (!isNoLink && !way.follow(target))
            break;
    }
    // Its own end says nothing as long as somebody works in it.
    if (folder.has_relative_path())
        addNamed(folder.parent_path(), folder.filename(), entryChanged);
}

/// False where there is no such folder, nor a link. One that may not be watched is passed over.
bool FileWatch::addWay(const fs::path& item) {
    std::error_code failure;
    return add(item, itemGone | IN_ONLYDIR) ||
           (fs::is_symlink(item, failure) && add(item, itemGone));
}

bool FileWatch::add(const fs::path& item, std::uint32_t events) {
    const int watch = inotify_.add(item.c_str(), events | IN_MASK_ADD | IN_DONT_FOLLOW);
    if (watch == -1)
        return errno != ENOENT && errno != ENOTDIR;
    watches_.insert(watch);
    return true;
}

void FileWatch::addNamed(const fs::path& folder, const std::string& name, std::uint32_t events) {
    add(folder, events | IN_ONLYDIR);
    names_.insert(name);
}

void FileWatch::waitForEvents() {
    isWaiting_ = true;
    inotify_.waitForRecords([queue = queue_, weak = weak_from_this()] {
        queue.async([weak] {
            if (const auto self = weak.lock())
                self->takeEvents();
        });
    });
}

void FileWatch::takeEvents() {
    isWaiting_ = false;
    if (drain()) {
        changed_();
    } else {
        waitForEvents();
    }
}

/// Empties the event queue; whether any of it concerns the files.
bool FileWatch::drain() {
    std::array<char, 4096> buffer;
    bool concerns = false;
    for (auto records = inotify_.read(buffer); !records.isEmpty();
         records = inotify_.read(buffer)) {
        while (const auto record = records.next()) {
            const bool isOfNow = record->watch == -1 || watches_.contains(record->watch);
            concerns |=
                isOfNow && ((record->events & concernsAll) != 0 || names_.contains(record->name));
        }
    }
    return concerns;
}

} // namespace Platform
