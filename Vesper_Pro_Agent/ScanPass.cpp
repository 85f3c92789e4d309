#include "Vesper_Pro_Agent/ScanPass.h"

#include "CorbelKit/Services/Const.h"
#include "Platform/FileManager.h"

#include <algorithm>
#include <string_view>
#include <thread>

namespace Vesper_Pro_Agent {
namespace {

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

} // namespace

ScanPass::ScanPass(Surroundings surroundings, std::shared_ptr<const JobSnapshot> previous,
                   Completion completion)
    : surroundings_(std::move(surroundings))
    , previous_(std::move(previous))
    , completion_(std::move(completion)) {}

void ScanPass::start(const std::vector<URL>& folders) {
    {
        const Platform::MutexLock lock(mutex_);
        for (const auto& folder : folders)
            add({.url = folder, .path = folder.path(), .isFolder = true});
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
    while (const auto* item = next(reader)) {
        if (!end(*reader, *item, read(*item, files)))
            return;
    }
    finishIfDone();
}

ReadOutcome ScanPass::read(const Item& item, JobFileReader& files) const {
    if (item.isFolder)
        return Platform::FileManager::contentsOfDirectory(item.url);
    const auto known = knownJob(item);
    return files.read(item.url, known ? &*known : nullptr);
}

std::optional<MonitoredJob> ScanPass::knownJob(const Item& item) const {
    return item.known ? std::optional((*previous_)[*item.known].copy()) : std::nullopt;
}

const ScanPass::Item* ScanPass::next(const std::shared_ptr<Reader>& reader) {
    const Platform::MutexLock lock(mutex_);
    if (isCancelled_ || remaining() == 0) {
        std::erase(readers_, reader);
        readerLeft_.notify_all();
        return nullptr;
    }
    ++reader->steps;
    reader->item = &items_[next_++];
    return reader->item;
}

// False when the pass went on without it.
bool ScanPass::end(Reader& reader, const Item& item, ReadOutcome outcome) {
    {
        const Platform::MutexLock lock(mutex_);
        if (!reader.isLeft) {
            reader.item = nullptr;
            store(item, std::move(outcome));
            if (item.isFolder)
                startReaders();
            return true;
        }
    }
    surroundings_.lateReads->end(item.path, std::move(outcome));
    return false;
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
    {
        const Platform::MutexLock lock(mutex_);
        if (!completion_ || !readers_.empty() || remaining() != 0)
            return;
        completion = std::exchange(completion_, nullptr);
        result.jobs = JobSnapshot(std::exchange(jobs_, {}));
        freeWhatWasRead();
        result.unanswered = std::move(unanswered_);
    }
    completion(std::move(result));
}

// The threads that read may keep the pass for a while yet. Those that were left have items of it.
void ScanPass::freeWhatWasRead() {
    if (isAnyLeft_)
        return;
    items_ = {};
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
        store(item, std::move(late.outcome));
        break;
    }
}

void ScanPass::store(const Item& item, ReadOutcome outcome) {
    if (auto* const job = std::get_if<ReadFile>(&outcome); job != nullptr && *job)
        jobs_.emplace_back(item.path, *std::move(*job));
    if (auto* const urls = std::get_if<ListedFolder>(&outcome); urls != nullptr && *urls)
        addEntries(*std::move(*urls));
}

// Both the entries, once in order, and the snapshot are walked along once.
void ScanPass::addEntries(std::vector<URL> urls) {
    std::vector<Item> entries;
    entries.reserve(urls.size());
    for (auto& url : urls) {
        if (url.lastPathComponent() != CorbelKit::Const::FileName::dsStore) {
            auto path = url.path();
            entries.push_back({.url = std::move(url), .path = std::move(path)});
        }
    }
    std::ranges::sort(entries, {}, &Item::path);
    auto known = entries.empty() ? 0 : previous_->lowerBound(entries.front().path);
    for (auto& entry : entries) {
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
    } else if (auto known = knownJob(item)) {
        jobs_.emplace_back(item.path, *std::move(known));
    }
    unanswered_.insert(item.path);
}

void ScanPass::keepEntriesOf(const Item& folder) {
    const auto prefix = folder.path.ends_with('/') ? folder.path : folder.path + '/';
    for (auto known = previous_->lowerBound(prefix); known < previous_->size(); ++known) {
        const auto job = (*previous_)[known];
        if (!job.path.starts_with(prefix))
            break;
        if (job.path.find('/', prefix.size()) == std::string_view::npos)
            jobs_.emplace_back(job.path, job.copy());
    }
}

} // namespace Vesper_Pro_Agent
