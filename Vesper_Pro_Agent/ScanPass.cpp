#include "Vesper_Pro_Agent/ScanPass.h"

#include "CorbelKit/Services/Const.h"
#include "Platform/FileHandle.h"

#include <algorithm>
#include <string_view>
#include <thread>

namespace Vesper_Pro_Agent {
namespace {

using Platform::FolderHandle;
using Platform::URL;

// A file system that hangs may hold this many threads, and no more. Each costs a few pages.
constexpr std::size_t mostLateReads = 64;

// How often a pass looks what comes no further, while its patience lasts. What has not since the
// last look is passed by, so that many that hang take little longer than one.
constexpr int looks = 20;

// More would not hash faster than a disk reads.
std::size_t mostReaders() {
    static const auto most = std::clamp(std::thread::hardware_concurrency(), 1U, 4U);
    return most; // asking the system opens a file
}

// Of the paths of its entries.
std::string prefixOf(std::string folder) {
    if (!folder.ends_with('/'))
        folder += '/';
    return folder;
}

} // namespace

ScanPass::ScanPass(Surroundings surroundings, std::shared_ptr<const JobSnapshot> previous,
                   Completion completion)
    : surroundings_(std::move(surroundings))
    , previous_(std::move(previous))
    , completion_(std::move(completion)) {}

void ScanPass::start(const std::vector<URL>& folders) {
    {
        const Platform::MutexLock lock(mutex_);
        for (const auto& url : folders) {
            auto& folder = folders_.emplace_back(Folder{.url = url});
            add({.path = url.path(), .folder = &folder, .isFolder = true});
        }
        startReaders();
    }
    watch();
    finishIfDone(); // where nothing had to be read
}

void ScanPass::cancel() {
    using std::chrono::steady_clock;
    // What does not hang ends within one buffer's time.
    const auto deadline = steady_clock::now() + std::chrono::milliseconds(200);
    const Platform::MutexLock lock(mutex_);
    isCancelled_ = true;
    completion_ = nullptr;
    while (!readers_.empty() &&
           readerLeft_.wait_until(mutex_, deadline) == std::cv_status::no_timeout) {
    }
}

void ScanPass::run(const std::shared_ptr<Reader>& reader) {
    JobFileReader files([this, reader] {
        ++reader->steps;
        return !isCancelled_;
    });
    for (auto* item = first(reader); item != nullptr;)
        item = next(reader, *item, read(*item, files));
    finishIfDone();
}

ReadOutcome ScanPass::read(const Item& item, JobFileReader& files) const {
    if (item.isFolder)
        return list(item.folder->url);
    return files.read(open(item), knownJob(item));
}

ListedFolder ScanPass::list(const URL& url) const {
    auto folder = FolderHandle::open(url);
    if (!folder)
        return {};
    ListedFolder listed;
    const auto prefix = prefixOf(url.path());
    const auto failed = folder->forEachName([&](std::string_view name) {
        if (name != CorbelKit::Const::FileName::dsStore)
            listed.paths.push_back(prefix + std::string(name));
    });
    if (failed)
        return {};
    std::ranges::sort(listed.paths);
    listed.folder = std::move(*folder);
    return listed;
}

// By path where the list is one that came late.
Platform::Expected<Platform::FileHandle> ScanPass::open(const Item& item) const {
    const std::string_view path = item.path;
    if (const auto& folder = item.folder->handle)
        return folder->openForReading(path.substr(path.rfind('/') + 1));
    return Platform::FileHandle::openForReading(URL::file(path, URL::DirectoryHint::notDirectory));
}

std::optional<MonitoredJob> ScanPass::knownJob(const Item& item) const {
    return item.known ? std::optional((*previous_)[*item.known].copy()) : std::nullopt;
}

ScanPass::Item* ScanPass::first(const std::shared_ptr<Reader>& reader) {
    const Platform::MutexLock lock(mutex_);
    return take(reader);
}

ScanPass::Item* ScanPass::take(const std::shared_ptr<Reader>& reader) {
    if (isCancelled_ || remaining() == 0) {
        std::erase(readers_, reader);
        readerLeft_.notify_all();
        return nullptr;
    }
    ++reader->steps;
    auto& item = items_[next_++];
    reader->item = &item;
    return &item;
}

// None when the pass went on without the reader.
ScanPass::Item* ScanPass::next(const std::shared_ptr<Reader>& reader, Item& item,
                               ReadOutcome outcome) {
    {
        const Platform::MutexLock lock(mutex_);
        if (!reader->isLeft) {
            reader->item = nullptr;
            store(item, std::move(outcome));
            if (item.isFolder)
                startReaders();
            return take(reader);
        }
    }
    surroundings_.lateReads->end(item.path, std::move(outcome));
    return nullptr;
}

void ScanPass::watch() {
    surroundings_.timers.asyncAfter(surroundings_.patience / looks, [weak = weak_from_this()] {
        const auto self = weak.lock();
        if (!self)
            return;
        {
            const Platform::MutexLock lock(self->mutex_);
            if (!self->completion_)
                return;
            self->leaveWhatHangs();
        }
        self->finishIfDone();
        self->watch();
    });
}

void ScanPass::finishIfDone() {
    Completion completion;
    ScanResult result;
    std::deque<Folder> folders; // closed when nobody waits any more
    {
        const Platform::MutexLock lock(mutex_);
        if (!completion_ || !readers_.empty() || remaining() != 0)
            return;
        completion = std::exchange(completion_, nullptr);
        result.jobs = jobs();
        if (!isAnyLeft_)
            folders.swap(folders_);
        freeWhatWasRead();
        result.unanswered = std::move(unanswered_);
    }
    completion(std::move(result));
}

JobSnapshot ScanPass::jobs() {
    std::vector<JobSnapshot::Found> found;
    found.reserve(items_.size() + kept_.size());
    for (const auto* items : {&items_, &kept_}) {
        for (const auto& item : *items) {
            if (item.job)
                found.push_back({.path = item.path, .job = &*item.job});
        }
    }
    return JobSnapshot(std::move(found));
}

// The threads that read may keep the pass for a while yet. Those that were left have items of it.
void ScanPass::freeWhatWasRead() {
    kept_.clear();
    if (isAnyLeft_)
        return;
    items_.clear();
    next_ = 0;
    previous_ = nullptr;
}

void ScanPass::leaveWhatHangs() {
    for (const auto& reader : readers_) {
        const auto steps = reader->steps.load();
        const bool isSlow =
            reader->item != nullptr && std::exchange(reader->stepsSeen, steps) == steps;
        reader->looksInVain = isSlow ? reader->looksInVain + 1 : 0;
        if (reader->looksInVain < looks)
            continue;
        reader->isLeft = isAnyLeft_ = true;
        surroundings_.lateReads->begin(reader->item->path);
        keepKnown(*reader->item);
    }
    std::erase_if(readers_, [](const auto& reader) { return reader->isLeft; });
    startReaders();
}

std::size_t ScanPass::countOfSlow() {
    return static_cast<std::size_t>(std::ranges::count_if(
        readers_, [](const auto& reader) { return reader->looksInVain > 0; }));
}

void ScanPass::startReaders() {
    const auto slow = countOfSlow();
    while (!isCancelled_ && readers_.size() - slow < std::min(mostReaders(), remaining()) &&
           surroundings_.lateReads->count() + slow < mostLateReads) {
        auto reader = std::make_shared<Reader>();
        readers_.push_back(reader);
        surroundings_.readers.async([self = shared_from_this(), reader] { self->run(reader); });
    }
    if (!readers_.empty())
        return;
    for (; remaining() > 0; ++next_)
        keepKnown(items_[next_]);
}

void ScanPass::add(Item item) {
    auto late = surroundings_.lateReads->take(item.path);
    switch (late.state) {
    case LateReads::State::none:
        items_.push_back(std::move(item));
        break;
    case LateReads::State::hangs:
        keepKnown(item);
        break;
    case LateReads::State::ended:
        store(kept_.emplace_back(std::move(item)), std::move(late.outcome));
        break;
    }
}

void ScanPass::store(Item& item, ReadOutcome outcome) {
    if (auto* const job = std::get_if<ReadFile>(&outcome)) {
        item.job = std::move(*job);
    } else {
        addEntries(item, std::get<ListedFolder>(std::move(outcome)));
    }
}

// Both the entries, which are in order, and the snapshot are walked along once.
void ScanPass::addEntries(const Item& item, ListedFolder listed) {
    item.folder->handle = std::move(listed.folder);
    auto known = listed.paths.empty() ? 0 : previous_->lowerBound(listed.paths.front());
    for (auto& path : listed.paths) {
        Item entry{.path = std::move(path), .folder = item.folder};
        while (known < previous_->size() && (*previous_)[known].path < entry.path)
            ++known;
        if (known < previous_->size() && (*previous_)[known].path == entry.path)
            entry.known = known;
        add(std::move(entry));
    }
}

void ScanPass::keepKnown(const Item& item) {
    if (item.isFolder) {
        keepEntriesOf(item);
    } else {
        kept_.push_back({.path = item.path, .folder = item.folder, .job = knownJob(item)});
    }
    unanswered_.insert(item.path);
}

void ScanPass::keepEntriesOf(const Item& folder) {
    const auto prefix = prefixOf(folder.path);
    for (auto known = previous_->lowerBound(prefix); known < previous_->size(); ++known) {
        const auto job = (*previous_)[known];
        if (!job.path.starts_with(prefix))
            break;
        if (job.path.find('/', prefix.size()) == std::string_view::npos) {
            kept_.push_back(
                {.path = std::string(job.path), .folder = folder.folder, .job = job.copy()});
        }
    }
}

} // namespace Vesper_Pro_Agent
