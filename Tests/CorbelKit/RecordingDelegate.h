#pragma once

#include "CorbelKit/Monitors/MonitorType.h"
#include "Platform/Mutex.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/WaitUntil.h"

#include <atomic>
#include <map>
#include <memory>
#include <string>
#include <utility>

/// Keeps count of the folders that a monitor notifies it of.
class RecordingDelegate : public CorbelKit::MonitorDelegate {
public:
    void monitorDidChange(const Platform::URL& url) override {
        record(url);
        TestSupport::waitUntil([&] { return !isBusy_; });
    }

    /// Whether calls do not return.
    void setBusy(bool isBusy) { isBusy_ = isBusy; }

    int calls(const std::filesystem::path& folder) const {
        const Platform::MutexLock lock(mutex_);
        const auto found = calls_.find(folder.string());
        return found == calls_.end() ? 0 : found->second;
    }

    bool isNotifiedOf(const std::filesystem::path& folder) const {
        return TestSupport::waitUntil([&] { return calls(folder) > 0; });
    }

    std::map<std::string, int> takeCalls() {
        const Platform::MutexLock lock(mutex_);
        return std::exchange(calls_, {});
    }

    bool hasFolderURLsOnly() const {
        const Platform::MutexLock lock(mutex_);
        return isFolderURL_;
    }

private:
    void record(const Platform::URL& url) {
        const Platform::MutexLock lock(mutex_);
        ++calls_[url.path()];
        isFolderURL_ = isFolderURL_ && url.hasDirectoryPath();
    }

    std::atomic<bool> isBusy_ = false;
    mutable Platform::Mutex mutex_;
    std::map<std::string, int> calls_ CORBEL_GUARDED_BY(mutex_);
    bool isFolderURL_ CORBEL_GUARDED_BY(mutex_) = true;
};

/// Owns its monitor, and lets go of it during the first call.
template <class Monitor>
struct EndingDelegate : CorbelKit::MonitorDelegate {
    void monitorDidChange(const Platform::URL& /*url*/) override {
        monitor->stopMonitoring();
        monitor.reset(); // the last owner but the running call itself
        hasEnded = true;
    }

    std::shared_ptr<Monitor> monitor;
    std::atomic<bool> hasEnded = false;
};

/// Whether a monitor of the folder may be stopped and released from its own call.
template <class Monitor>
bool isReleasedFromItsCall(const Platform::URL& folder, const std::filesystem::path& file) {
    const auto ending = std::make_shared<EndingDelegate<Monitor>>();
    ending->monitor = Monitor::make(folder);
    const std::weak_ptr<Monitor> monitor = ending->monitor;
    ending->monitor->setDelegate(ending);
    TestSupport::writeFile(file, "1");
    return TestSupport::waitUntil([&] { return ending->hasEnded.load(); }) &&
           TestSupport::waitUntil([&] { return monitor.expired(); });
}
