#pragma once

#include "CorbelKit/Monitors/MonitorType.h"
#include "Platform/DispatchQueue.h"
#include "Platform/URL.h"
#include "Platform/UUID.h"
#include "Tools/JobLink/Core/KnownJobs.h"
#include "Tools/JobLink/Core/ListedJob.h"
#include "Vesper_Pro_Agent/JobScanner.h"

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace JobLink {

/// All jobs of the folders by the agent's rules, as they are now and as they become, read where
/// waiting holds nobody. Main thread, but for `monitorDidChange`.
class JobList final : public CorbelKit::MonitorDelegate,
                      public std::enable_shared_from_this<JobList> {
    struct Private {
        explicit Private() = default;
    };

public:
    /// What has become of the list since the last one.
    struct Change {
        std::vector<ListedJob> stored;    ///< each in the place of the one with its path, if any
        std::vector<std::string> removed; ///< paths
        bool isComplete = false;          ///< nothing is being read any more
    };

    using Observer = std::function<void(Change change)>;

    /// The observer is called on the main thread: first with the jobs by name, then with what is in
    /// them, some at a time.
    static std::shared_ptr<JobList> make(std::vector<Platform::URL> folders, Observer observer);

    /// For `make`.
    JobList(Private, std::vector<Platform::URL> folders, Observer observer);
    ~JobList() override;
    JobList(const JobList&) = delete;
    JobList& operator=(const JobList&) = delete;
    JobList(JobList&&) = delete;
    JobList& operator=(JobList&&) = delete;

    /// Called on the monitors' queue. The folders are looked at again soon.
    void monitorDidChange(const Platform::URL& url) override;

private:
    using Snapshot = std::shared_ptr<const Vesper_Pro_Agent::JobSnapshot>;

    /// What outlives the list for as long as it reads; on the queue only.
    struct Reader {
        std::vector<Platform::URL> folders;
        std::string homePath;
        std::unique_ptr<const KnownJobs> known{};
        std::atomic<bool> isCancelled = false; // from the main thread
    };

    void watchFolders();
    void requestPass();
    void look();
    void publish(Change change) const;
    void endPass(Snapshot jobs);

    static void read(const std::shared_ptr<Reader>& reader, const Snapshot& before,
                     const Snapshot& jobs, const std::weak_ptr<JobList>& list);

    const Observer observer_;
    // Of one's own: a request of another list that has gone since would drop this one's.
    const std::string coalescingIdentifier_ = "JobList " + Platform::UUID::random().string();
    const std::shared_ptr<Reader> reader_;
    const Platform::DispatchQueue reading_ =
        Platform::DispatchQueue::serialBlocking("com.tarnwell.JobList");
    std::vector<std::shared_ptr<CorbelKit::MonitorType>> monitors_;
    std::unique_ptr<Vesper_Pro_Agent::JobScanner> scanner_; // once the folders are watched
    Snapshot jobs_;                                         // of the last pass
    bool isReading_ = false;
    bool isPassDue_ = false; // another, when the one under way has ended
};

} // namespace JobLink
