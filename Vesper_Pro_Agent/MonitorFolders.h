#pragma once

#include "CorbelKit/Monitors/MonitorType.h"
#include "Platform/UserNotificationCenter.h"
#include "Vesper_Pro_Agent/JobComparison.h"
#include "Vesper_Pro_Agent/JobScanner.h"
#include "Vesper_Pro_Agent/NotificationDelegate.h"
#include "Vesper_Pro_Agent/ReportingSettings.h"

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Vesper_Pro_Agent {

/// The agent's central object: watches the job folders, keeps what was last seen in them, and has
/// the user notified of each change that the settings do not filter out. State and operations
/// belong to the main thread, but for `monitorDidChange`.
class MonitorFolders final : public CorbelKit::MonitorDelegate,
                             public std::enable_shared_from_this<MonitorFolders> {
    struct Private {
        explicit Private() = default;
    };

public:
    /// The one instance, made on first use and alive as long as the process.
    static MonitorFolders& shared();

    explicit MonitorFolders(Private);

    /// Watches the folders, registers with the notification centre, takes what the folders hold now
    /// as known, and follows the settings from then on. Called once, at launch. Returns while the
    /// folders are opened and read; the completion is called on the main thread when all that is
    /// done. What hangs then joins when it answers.
    void start(std::function<void()> completion);

    /// Reads nothing any more, and posts what was found. Called once, when the process is about to
    /// end.
    void stop();

    /// One per folder, in the order of `jobFolders`; empty before `start`.
    const std::vector<std::shared_ptr<CorbelKit::MonitorType>>& monitors() const {
        return monitors_;
    }

    /// Called on the monitors' queue. Has all folders compared once, 0.51 seconds later, however
    /// many further calls come meanwhile.
    void monitorDidChange(const Platform::URL& url) override;

private:
    void watchFolders();
    void registerForNotifications();
    void takeFirstLook();
    void requestPass();
    void lookForChanges();
    void scan(void (MonitorFolders::*receive)(ScanResult));
    void takeBaseline(ScanResult found);
    void reportChanges(ScanResult found);
    void completeBaseline(const ScanResult& found);
    void filterChanges();
    void dropUnreported();
    void postChanges(const std::optional<std::string>& frontApplication);
    void endScan();

    std::vector<std::shared_ptr<CorbelKit::MonitorType>> monitors_;
    std::shared_ptr<const JobSnapshot> lastCheckedJobs_ = std::make_shared<JobSnapshot>();
    std::set<std::string, std::less<>> notInBaseline_; // files and folders that have not answered
    std::unique_ptr<JobScanner> scanner_;              // once the folders are watched
    bool isScanning_ = false;                          // until what it found is posted
    bool isPassDue_ = false;                           // another, when the one under way has ended
    std::vector<JobChange> unposted_; // before the settings and the application in front are known
    std::function<void()> started_;
    const std::shared_ptr<ReportingSettings> settings_ = std::make_shared<ReportingSettings>();
    std::string notificationCategory_;
    Platform::UserNotificationCenter& notificationCenter_;
    std::shared_ptr<NotificationDelegate> notificationDelegate_;
};

} // namespace Vesper_Pro_Agent
