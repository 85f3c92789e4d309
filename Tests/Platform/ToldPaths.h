#pragma once

#include "Platform/FileSystemEventStream.h"
#include "Tests/Support/WaitUntil.h"

#include <mutex>
#include <set>

/// The paths that a stream told, and the steps that every test begins with.
class ToldPaths {
public:
    std::optional<Platform::FileSystemEventStream> created(const std::string& path) const {
        return Platform::FileSystemEventStream::create(
            path, std::chrono::milliseconds(20), [record = record_](const auto& paths) {
                const std::lock_guard lock(record->mutex);
                record->paths.insert(paths.begin(), paths.end());
            });
    }

    std::optional<Platform::FileSystemEventStream> started(const std::string& path) const {
        auto stream = created(path);
        stream->setDispatchQueue(Platform::DispatchQueue::concurrent("test.events"));
        stream->start();
        return stream;
    }

    bool contains(const std::string& path) const {
        const std::lock_guard lock(record_->mutex);
        return record_->paths.contains(path);
    }

    bool soonContain(const std::string& path) const {
        return TestSupport::waitUntil([&] { return contains(path); });
    }

    void forget() {
        const std::lock_guard lock(record_->mutex);
        record_->paths.clear();
    }

private:
    struct Record {
        std::mutex mutex;
        std::set<std::string> paths;
    };

    const std::shared_ptr<Record> record_ = std::make_shared<Record>();
};
