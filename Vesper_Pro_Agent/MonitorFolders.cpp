#include "Vesper_Pro_Agent/MonitorFolders.h"

#include "CorbelKit/Monitors/SingleFolderMonitor.h"
#include "CorbelKit/Services/Const.h"
#include "CorbelKit/Services/Defaults.h"
#include "CorbelKit/Services/Limit.h"
#include "CorbelKit/Services/ResourceBundle.h"
#include "CorbelKit/Services/SharedSettings.h"
#include "Platform/MainThread.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/StandardOutput.h"
#include "Platform/Workspace.h"
#include "Vesper_Pro_Agent/ChangePosting.h"
#include "Vesper_Pro_Agent/JobFolders.h"

#include <algorithm>
#include <utility>

namespace Vesper_Pro_Agent {
namespace {

using Platform::MainThread::run;
namespace Defaults = CorbelKit::Defaults;
namespace SharedSettings = CorbelKit::SharedSettings;

// Writing one job file raises several events; what comes within this time is looked at once.
constexpr auto coalescingIdentifier = "AgentMonitor";
constexpr double coalescingDelayInSeconds = 0.51;

} // namespace

MonitorFolders& MonitorFolders::shared() {
    static const Platform::NeverDestroyed<std::shared_ptr<MonitorFolders>> instance(
        std::make_shared<MonitorFolders>(Private()));
    return *instance.get();
}

MonitorFolders::MonitorFolders(Private)
    : notificationCategory_(CorbelKit::Const::NotificationCategory::Vesper::agent.rawValue())
    , notificationCenter_(Platform::UserNotificationCenter::current())
    , notificationDelegate_(std::make_shared<NotificationDelegate>()) {
    Platform::MainThread::check();
}

void MonitorFolders::start(std::function<void()> completion) {
    Platform::MainThread::check();
    started_ = std::move(completion);
    watchFolders(); // before the first look, so that nothing falls between the two
    registerForNotifications();
    scanner_ = std::make_unique<JobScanner>(
        jobFolders(), [weak = weak_from_this()] { // a late read is news like any other
            if (auto folders = weak.lock())
                folders->requestPass();
        });
    scan(&MonitorFolders::takeBaseline);
}

void MonitorFolders::stop() {
    Platform::MainThread::check();
    if (scanner_)
        scanner_->stop();
    postChanges(std::nullopt);
}

void MonitorFolders::watchFolders() {
    for (const auto& folder : jobFolders()) {
        auto monitor = CorbelKit::SingleFolderMonitor::make(folder);
        monitor->setDelegate(weak_from_this());
        monitors_.push_back(std::move(monitor));
    }
}

void MonitorFolders::registerForNotifications() {
    notificationCenter_.setDelegate(notificationDelegate_);
    notificationCenter_.requestAuthorization(
        Platform::AuthorizationOptions::alert,
        [](bool /*granted*/, const std::optional<Platform::Error>& error) {
            if (error)
                Platform::StandardOutput::writeLine(error->description);
        });
    const Platform::NotificationAction show{
        .identifier = std::string(CorbelKit::Const::NotificationAction::show.rawValue()),
        .title = CorbelKit::localizedString("Show")};
    notificationCenter_.setNotificationCategories(
        {{.identifier = notificationCategory_, .actions = {show}, .intentIdentifiers = {}}});
}

void MonitorFolders::observeSettings() {
    const auto suite = SharedSettings::suite();
    if (!suite)
        return;
    for (const auto key : {Defaults::exceptions, Defaults::excludePrefixes}) {
        settingsObservations_.push_back(suite->observe(
            std::string(key), [weak = weak_from_this()](const auto& keyPath, const auto&) {
                if (auto folders = weak.lock())
                    folders->observeValueForKeyPath(keyPath);
            }));
    }
}

const std::vector<std::string>& MonitorFolders::exceptions() {
    Platform::MainThread::check();
    if (!exceptions_)
        exceptions_ = SharedSettings::readExceptions();
    return *exceptions_;
}

const std::vector<std::string>& MonitorFolders::excludePrefixes() {
    Platform::MainThread::check();
    if (!excludePrefixes_)
        excludePrefixes_ = SharedSettings::readExcludePrefixes();
    return *excludePrefixes_;
}

void MonitorFolders::observeValueForKeyPath(const std::optional<std::string>& keyPath) {
    run([weak = weak_from_this(), keyPath] {
        if (auto folders = weak.lock(); folders && keyPath)
            folders->reloadSetting(*keyPath);
    });
}

void MonitorFolders::reloadSetting(std::string_view key) {
    Platform::MainThread::check();
    if (key == Defaults::exceptions) {
        exceptions_ = SharedSettings::readExceptions();
    } else if (key == Defaults::excludePrefixes) {
        excludePrefixes_ = SharedSettings::readExcludePrefixes();
    }
}

void MonitorFolders::monitorDidChange(const Platform::URL& /*url*/) {
    requestPass();
}

void MonitorFolders::requestPass() {
    run([weak = weak_from_this()] {
        CorbelKit::Limit::shared().request(coalescingIdentifier, coalescingDelayInSeconds, [weak] {
            run([weak] {
                if (auto folders = weak.lock())
                    folders->lookForChanges();
            });
        });
    });
}

void MonitorFolders::lookForChanges() {
    Platform::MainThread::check();
    if (isScanning_) {
        isPassDue_ = true;
    } else {
        scan(&MonitorFolders::reportChanges);
    }
}

// Scans never overlap: what comes meanwhile waits for its own.
void MonitorFolders::scan(void (MonitorFolders::*receive)(JobSnapshot)) {
    isScanning_ = true;
    scanner_->scan(lastCheckedJobs_, [weak = weak_from_this(), receive](JobSnapshot jobs) {
        run([weak, receive, jobs = std::make_shared<JobSnapshot>(std::move(jobs))] {
            const auto folders = weak.lock();
            if (!folders)
                return;
            (*folders.*receive)(std::move(*jobs));
        });
    });
}

void MonitorFolders::endScan() {
    isScanning_ = false;
    if (std::exchange(isPassDue_, false))
        lookForChanges();
}

void MonitorFolders::takeBaseline(JobSnapshot jobs) {
    lastCheckedJobs_ = std::make_shared<JobSnapshot>(std::move(jobs));
    observeSettings();
    if (const auto started = std::exchange(started_, nullptr))
        started();
    endScan();
}

void MonitorFolders::reportChanges(JobSnapshot jobs) {
    Platform::MainThread::check();
    unposted_ = compareJobs(*lastCheckedJobs_, jobs);
    lastCheckedJobs_ = std::make_shared<JobSnapshot>(std::move(jobs));
    if (!unposted_.empty()) {
        const ChangeFilter filter{.exceptions = exceptions(), .excludePrefixes = excludePrefixes()};
        std::erase_if(unposted_, [&](const auto& change) { return !isReported(change, filter); });
    }
    if (unposted_.empty()) {
        endScan();
        return;
    }
    Platform::Workspace::findMenuBarOwningApplication([weak = weak_from_this()](const auto& name) {
        if (const auto folders = weak.lock()) {
            folders->postChanges(name);
            folders->endScan();
        }
    });
}

// The main application shows what changes itself while it is in front.
void MonitorFolders::postChanges(const std::optional<std::string>& frontApplication) {
    const auto changes = std::exchange(unposted_, {});
    if (frontApplication != CorbelKit::Const::App::Name::vesperPro)
        std::ranges::for_each(changes, postChange);
}

} // namespace Vesper_Pro_Agent
