#pragma once

#include "Platform/FileSystemEventStream.h"
#include "Platform/Mutex.h"
#include "Tests/Support/WaitUntil.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

/// The paths that the streams of a test have reported. Copies share them.
class ReportedPaths {
public:
    std::unique_ptr<Platform::FileSystemEventStream> streamOf(const std::string& path) const {
        return Platform::FileSystemEventStream::make(
            path, std::chrono::milliseconds(20), Platform::DispatchQueue::concurrent("test.events"),
            [record = *this](const auto& paths) { record.add(paths); });
    }

    void add(const std::vector<std::string>& paths) const {
        const Platform::MutexLock lock(record_->mutex);
        record_->paths.insert(paths.begin(), paths.end());
    }

    bool contains(const std::string& path) const {
        const Platform::MutexLock lock(record_->mutex);
        return record_->paths.contains(path);
    }

    bool soonContain(const std::string& path) const {
        return TestSupport::waitUntil([&] { return contains(path); });
    }

    void forget() const {
        const Platform::MutexLock lock(record_->mutex);
        record_->paths.clear();
    }

private:
    struct Record {
        Platform::Mutex mutex;
        std::set<std::string> paths CORBEL_GUARDED_BY(mutex);
    };

    std::shared_ptr<Record> record_ = std::make_shared<Record>();
};
