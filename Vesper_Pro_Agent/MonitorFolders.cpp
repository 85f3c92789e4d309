#include "Vesper_Pro_Agent/MonitorFolders.h"

#include "CorbelKit/Monitors/SingleFolderMonitor.h"
#include "CorbelKit/Services/Const.h"
#include "CorbelKit/Services/Limit.h"
#include "CorbelKit/Services/ResourceBundle.h"
#include "Platform/FileManager.h"
#include "Platform/MainThread.h"
#include "Platform/Memory.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/PrintableText.h"
#include "Platform/StandardOutput.h"
#include "Platform/Workspace.h"
#include "Vesper_Pro_Agent/ChangePosting.h"
#include "Vesper_Pro_Agent/JobFolders.h"
#include "Vesper_Pro_Agent/PatientWork.h"

#include <algorithm>
#include <iostream>
#include <utility>

namespace Vesper_Pro_Agent {
namespace {

using Platform::MainThread::run;

// Writing one job file raises several events; what comes within this time is looked at once.
constexpr auto coalescingIdentifier = "AgentMonitor";
constexpr double coalescingDelayInSeconds = 0.51;

// On standard error, as the system's log takes a descriptor, of which there may be none left.
void watch(CorbelKit::SingleFolderMonitor& monitor) {
    monitor.startMonitoring();
    if (monitor.hasSource() || !Platform::FileManager::fileExists(monitor.url()))
        return;
    std::cerr << "vesper-pro-agent: cannot watch " +
                     Platform::printableText(monitor.url().path(),
                                             Platform::ActingCharacters::escaped) +
                     " (too many open files, or no permission)\n";
    std::cerr.clear();
}

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
    watchFolders();
    registerForNotifications();
}

void MonitorFolders::stop() {
    Platform::MainThread::check();
    if (scanner_)
        scanner_->stop();
    dropUnreported(); // they may still be waiting for the settings
    postChanges(std::nullopt);
}

void MonitorFolders::watchFolders() {
    // Before the first look, so that nothing falls between the two; but for a folder that hangs.
    std::vector<std::function<void()>> starts;
    for (const auto& folder : jobFolders()) {
        const auto monitor = CorbelKit::SingleFolderMonitor::makeIdle(folder);
        monitor->setDelegate(weak_from_this());
        monitors_.push_back(monitor);
        starts.emplace_back([weak = weak_from_this(), monitor] {
            watch(*monitor);
            run([weak] {
                if (const auto folders = weak.lock(); folders && folders->scanner_)
                    folders->requestPass();
            });
        });
    }
    workPatiently(Platform::DispatchQueue::blocking("com.tarnwell.MonitorFolders"), starts,
                  [weak = weak_from_this()] {
                      if (const auto folders = weak.lock())
                          folders->takeFirstLook();
                  });
}

void MonitorFolders::takeFirstLook() {
    scanner_ = std::make_unique<JobScanner>(
        jobFolders(), [weak = weak_from_this()] { // a late read is news like any other
            if (auto folders = weak.lock())
                folders->requestPass();
        });
    scan(&MonitorFolders::takeBaseline);
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
void MonitorFolders::scan(void (MonitorFolders::*receive)(ScanResult)) {
    isScanning_ = true;
    scanner_->scan(lastCheckedJobs_, [weak = weak_from_this(), receive](ScanResult result) {
        run([weak, receive, result = std::make_shared<ScanResult>(std::move(result))] {
            const auto folders = weak.lock();
            if (!folders)
                return;
            (*folders.*receive)(std::move(*result));
        });
    });
}

void MonitorFolders::endScan() {
    isScanning_ = false;
    Platform::releaseFreedMemory(); // a pass needs several times what is kept of it
    if (std::exchange(isPassDue_, false))
        lookForChanges();
}

void MonitorFolders::takeBaseline(ScanResult found) {
    lastCheckedJobs_ = std::make_shared<JobSnapshot>(std::move(found.jobs));
    notInBaseline_ = std::move(found.unanswered);
    settings_->observe([weak = weak_from_this()] {
        const auto folders = weak.lock();
        if (!folders)
            return;
        if (const auto started = std::exchange(folders->started_, nullptr))
            started();
        folders->endScan();
    });
}

void MonitorFolders::reportChanges(ScanResult found) {
    Platform::MainThread::check();
    completeBaseline(found);
    unposted_ = compareJobs(*lastCheckedJobs_, found.jobs);
    lastCheckedJobs_ = std::make_shared<JobSnapshot>(std::move(found.jobs));
    if (unposted_.empty()) {
        endScan();
        return;
    }
    settings_->whenRead([weak = weak_from_this()] {
        if (const auto folders = weak.lock())
            folders->filterChanges();
    });
}

// What was there at launch, but did not answer then, is no news when it does.
void MonitorFolders::completeBaseline(const ScanResult& found) {
    if (notInBaseline_.empty())
        return;
    const auto isAwaited = [this](std::string_view path) {
        const auto folder = path.substr(0, path.rfind('/'));
        return notInBaseline_.contains(path) || notInBaseline_.contains(folder) ||
               notInBaseline_.contains(std::string(folder) + '/');
    };
    JobSnapshot::Jobs baseline;
    for (const auto& job : *lastCheckedJobs_)
        baseline.emplace_back(job.path, job.copy());
    for (const auto& job : found.jobs) {
        if (isAwaited(job.path) && !lastCheckedJobs_->find(job.path))
            baseline.emplace_back(job.path, job.copy());
    }
    lastCheckedJobs_ = std::make_shared<JobSnapshot>(std::move(baseline));
    auto unanswered = found.unanswered;
    std::erase_if(unanswered, [&](const auto& path) { return !isAwaited(path); });
    notInBaseline_ = std::move(unanswered);
}

void MonitorFolders::dropUnreported() {
    std::erase_if(unposted_, [filter = settings_->filter()](const auto& change) {
        return !isReported(change, filter);
    });
}

void MonitorFolders::filterChanges() {
    dropUnreported();
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
