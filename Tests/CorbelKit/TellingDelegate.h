#pragma once

#include "CorbelKit/Monitors/MonitorType.h"
#include "Tests/Support/WaitUntil.h"

#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <utility>

/// Keeps count of the folders that a monitor tells of.
class TellingDelegate : public CorbelKit::MonitorDelegate {
public:
    void monitorDidChange(const Platform::URL& url) override {
        const std::lock_guard lock(mutex_);
        ++calls_[url.path()];
        isFolderURL_ = isFolderURL_ && url.hasDirectoryPath();
    }

    int calls(const std::filesystem::path& folder) const {
        const std::lock_guard lock(mutex_);
        const auto found = calls_.find(folder.string());
        return found == calls_.end() ? 0 : found->second;
    }

    bool isToldOf(const std::filesystem::path& folder) const {
        return TestSupport::waitUntil([&] { return calls(folder) > 0; });
    }

    std::map<std::string, int> takeCalls() {
        const std::lock_guard lock(mutex_);
        return std::exchange(calls_, {});
    }

    bool hasFolderURLsOnly() const {
        const std::lock_guard lock(mutex_);
        return isFolderURL_;
    }

private:
    mutable std::mutex mutex_;
    std::map<std::string, int> calls_;
    bool isFolderURL_ = true;
};
