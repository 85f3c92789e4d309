#pragma once

#include "CorbelKit/Monitors/MonitorType.h"
#include "Platform/UserDefaults.h"
#include "Platform/UserNotificationCenter.h"
#include "Vesper_Pro_Agent/JobComparison.h"
#include "Vesper_Pro_Agent/JobScanner.h"
#include "Vesper_Pro_Agent/NotificationDelegate.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Vesper_Pro_Agent {

/// The agent's central object: watches the job folders, keeps what was last seen in them, and has
/// the user notified of each change that the settings do not filter out. State and operations
/// belong to the main thread, but for `monitorDidChange` and `observeValueForKeyPath`.
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
    /// folders are read; the completion is called on the main thread when all that is done.
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

    /// The labels of which the user does not want to be notified, and the beginnings of such
    /// labels: read from the shared settings on first use, and then kept until a change of them is
    /// observed.
    const std::vector<std::string>& exceptions();
    const std::vector<std::string>& excludePrefixes();

    /// Called on any thread when a setting has changed: reads the list anew that is kept under the
    /// key, and none where there is no key or another one.
    void observeValueForKeyPath(const std::optional<std::string>& keyPath);

private:
    void watchFolders();
    void registerForNotifications();
    void observeSettings();
    void requestPass();
    void lookForChanges();
    void scan(void (MonitorFolders::*receive)(JobSnapshot));
    void takeBaseline(JobSnapshot jobs);
    void reportChanges(JobSnapshot jobs);
    void postChanges(const std::optional<std::string>& frontApplication);
    void endScan();
    void reloadSetting(std::string_view key);

    std::vector<std::shared_ptr<CorbelKit::MonitorType>> monitors_;
    std::shared_ptr<const JobSnapshot> lastCheckedJobs_ = std::make_shared<JobSnapshot>();
    std::unique_ptr<JobScanner> scanner_; // from `start` on
    bool isScanning_ = false;             // until what it found is posted
    bool isPassDue_ = false;              // another, when the one under way has ended
    std::vector<JobChange> unposted_;     // while it is not known which application is in front
    std::function<void()> started_;
    std::optional<std::vector<std::string>> exceptions_;
    std::optional<std::vector<std::string>> excludePrefixes_;
    std::string notificationCategory_;
    Platform::UserNotificationCenter& notificationCenter_;
    std::shared_ptr<NotificationDelegate> notificationDelegate_;
    std::vector<Platform::UserDefaults::Observation> settingsObservations_;
};

} // namespace Vesper_Pro_Agent
