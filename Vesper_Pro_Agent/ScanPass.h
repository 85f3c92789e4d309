#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/FolderHandle.h"
#include "Platform/Mutex.h"
#include "Platform/URL.h"
#include "Vesper_Pro_Agent/JobFileReader.h"
#include "Vesper_Pro_Agent/JobSnapshot.h"
#include "Vesper_Pro_Agent/LateReads.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Vesper_Pro_Agent {

/// What a pass has found.
struct ScanResult {
    JobSnapshot jobs;

    /// Files, and folders, that gave no answer, nor have ever since they were first asked.
    std::set<std::string, std::less<>> unanswered;
};

/// One pass over the folders, shared by the threads that read for it. It lives while one of them
/// does.
class ScanPass : public std::enable_shared_from_this<ScanPass> {
public:
    using Completion = std::function<void(ScanResult result)>;

    /// What the passes of one scanner have in common.
    struct Surroundings {
        std::shared_ptr<LateReads> lateReads;
        Platform::DispatchQueue readers; ///< a blocking one
        Platform::DispatchQueue timers;
        std::chrono::nanoseconds patience; ///< with one that comes no further
    };

    ScanPass(Surroundings surroundings, std::shared_ptr<const JobSnapshot> previous,
             Completion completion);

    void start(const std::vector<Platform::URL>& folders);

    /// No completion comes, and what reads ends soon.
    void cancel();

private:
    struct Folder {
        Platform::URL url;
        std::optional<Platform::FolderHandle> handle{}; // once it has been listed in this pass
    };

    /// One thing to be read: a folder's entries, or a file.
    struct Item {
        std::string path;
        Folder* folder; // to be listed, or in which the file lies
        bool isFolder = false;
        std::optional<std::size_t> known{}; // of a file, in the snapshot before
        std::optional<MonitoredJob> job{};  // once read. Under the pass's mutex
    };

    /// What one thread is at.
    struct Reader {
        std::atomic<std::uint64_t> steps = 0;
        // Under the pass's mutex:
        const Item* item = nullptr;
        std::uint64_t stepsSeen = 0; // when last looked at
        int looksInVain = 0;         // since it last came further
        bool isLeft = false;         // the pass does not wait for it any more
    };

    void run(const std::shared_ptr<Reader>& reader);
    ReadOutcome read(const Item& item, JobFileReader& files) const;
    ListedFolder list(const Platform::URL& url) const;
    Platform::Expected<Platform::FileHandle> open(const Item& item) const;
    std::optional<MonitoredJob> knownJob(const Item& item) const;
    Item* first(const std::shared_ptr<Reader>& reader);
    Item* next(const std::shared_ptr<Reader>& reader, Item& item, ReadOutcome outcome);
    void watch();
    void finishIfDone();

    Item* take(const std::shared_ptr<Reader>& reader) CORBEL_REQUIRES(mutex_);
    JobSnapshot jobs() CORBEL_REQUIRES(mutex_);
    void freeWhatWasRead() CORBEL_REQUIRES(mutex_);
    void leaveWhatHangs() CORBEL_REQUIRES(mutex_);
    void startReaders() CORBEL_REQUIRES(mutex_);
    void add(Item item) CORBEL_REQUIRES(mutex_);
    void addEntries(const Item& item, ListedFolder listed) CORBEL_REQUIRES(mutex_);
    void store(Item& item, ReadOutcome outcome) CORBEL_REQUIRES(mutex_);
    std::size_t countOfSlow() CORBEL_REQUIRES(mutex_);
    void keepKnown(const Item& item) CORBEL_REQUIRES(mutex_);
    void keepEntriesOf(const Item& folder) CORBEL_REQUIRES(mutex_);

    std::size_t remaining() const CORBEL_REQUIRES(mutex_) { return items_.size() - next_; }

    const Surroundings surroundings_;
    std::shared_ptr<const JobSnapshot> previous_; // until all is read
    std::atomic<bool> isCancelled_ = false;

    Platform::Mutex mutex_;
    std::condition_variable_any readerLeft_;
    bool isAnyLeft_ CORBEL_GUARDED_BY(mutex_) = false; // of the readers
    Completion completion_ CORBEL_GUARDED_BY(mutex_);  // empty once called
    std::deque<Folder> folders_ CORBEL_GUARDED_BY(mutex_);
    std::deque<Item> items_ CORBEL_GUARDED_BY(mutex_); // their addresses stay
    std::size_t next_ CORBEL_GUARDED_BY(mutex_) = 0;   // of the items: not yet taken
    std::deque<Item> kept_ CORBEL_GUARDED_BY(mutex_);  // that this pass has not read itself
    std::vector<std::shared_ptr<Reader>> readers_ CORBEL_GUARDED_BY(mutex_); // to be waited for
    std::set<std::string, std::less<>> unanswered_ CORBEL_GUARDED_BY(mutex_);
};

} // namespace Vesper_Pro_Agent
