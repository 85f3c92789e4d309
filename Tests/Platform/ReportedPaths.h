#pragma once

#include "Platform/FileSystemEventStream.h"
#include "Platform/Mutex.h"
#include "Tests/Support/WaitUntil.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

/// The paths that the streams of a test have reported.
class ReportedPaths {
public:
    std::unique_ptr<Platform::FileSystemEventStream> streamOf(const std::string& path) const {
        return Platform::FileSystemEventStream::make(
            path, std::chrono::milliseconds(20), Platform::DispatchQueue::concurrent("test.events"),
            [record = record_](const auto& paths) { record->add(paths); });
    }

    void add(const std::vector<std::string>& paths) const { record_->add(paths); }

    bool contains(const std::string& path) const { return record_->contains(path); }

    bool soonContain(const std::string& path) const {
        return TestSupport::waitUntil([&] { return contains(path); });
    }

    void forget() const { record_->clear(); }

private:
    class Record {
    public:
        void add(const std::vector<std::string>& paths) {
            const Platform::MutexLock lock(mutex_);
            paths_.insert(paths.begin(), paths.end());
        }

        bool contains(const std::string& path) {
            const Platform::MutexLock lock(mutex_);
            return paths_.contains(path);
        }

        void clear() {
            const Platform::MutexLock lock(mutex_);
            paths_.clear();
        }

    private:
        Platform::Mutex mutex_;
        std::set<std::string> paths_ CORBEL_GUARDED_BY(mutex_);
    };

    const std::shared_ptr<Record> record_ = std::make_shared<Record>();
};
