#pragma once

#include "CorbelKit/Monitors/MonitorType.h"
#include "Platform/UserNotificationCenter.h"
#include "Vesper_Pro_Agent/JobScan.h"
#include "Vesper_Pro_Agent/NotificationDelegate.h"

#include <memory>
#include <string>
#include <vector>

namespace Vesper_Pro_Agent {

/// The agent's central object: watches the job folders, keeps what was last seen in them, and has
/// the user told of each change. State and operations belong to the main thread, but for
/// `monitorDidChange`.
class MonitorFolders final : public CorbelKit::MonitorDelegate,
                             public std::enable_shared_from_this<MonitorFolders> {
    struct Private {
        explicit Private() = default;
    };

public:
    /// The one instance, made on first use and alive as long as the process.
    static MonitorFolders& shared();

    explicit MonitorFolders(Private);

    /// Watches the folders, registers with the notification centre and takes what the folders hold
    /// now as known. Called once, at launch.
    void start();

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
    void lookForChanges();

    std::vector<std::shared_ptr<CorbelKit::MonitorType>> monitors_;
    JobSnapshot lastCheckedJobs_;
    std::vector<std::string> exceptions_;
    std::vector<std::string> excludePrefixes_;
    std::string notificationCategory_;
    Platform::UserNotificationCenter& notificationCenter_;
    std::shared_ptr<NotificationDelegate> notificationDelegate_;
};

} // namespace Vesper_Pro_Agent
