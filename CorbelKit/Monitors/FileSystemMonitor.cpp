#include "CorbelKit/Monitors/FileSystemMonitor.h"

#include "Platform/FileManager.h"
#include "Platform/NeverDestroyed.h"

#include <chrono>
#include <set>
#include <utility>

namespace CorbelKit {
namespace {

using Platform::URL;

constexpr std::chrono::seconds latency(1);

/// The folders to look at, each once.
std::set<URL> foldersOf(const std::vector<std::string>& paths) {
    std::set<URL> folders;
    for (const auto& path : paths) {
        auto item = URL::file(path);
        folders.insert(item.hasDirectoryPath() ? std::move(item)
                                               : item.deletingLastPathComponent());
    }
    return folders;
}

} // namespace

Platform::DispatchQueue FileSystemMonitor::queue() {
    static const Platform::NeverDestroyed<Platform::DispatchQueue> queue(
        Platform::DispatchQueue::concurrent("com.tarnwell.FileSystemMonitor"));
    return queue.get();
}

std::shared_ptr<FileSystemMonitor> FileSystemMonitor::make(const URL& url) {
    auto monitor = std::make_shared<FileSystemMonitor>(Private(), url);
    monitor->startMonitoring();
    return monitor;
}

FileSystemMonitor::FileSystemMonitor(Private, const URL& url)
    : url_(Platform::FileManager::resolvingSymlinksInPath(url)) {}

FileSystemMonitor::~FileSystemMonitor() {
    stopMonitoring();
}

std::shared_ptr<MonitorDelegate> FileSystemMonitor::delegate() const {
    const Platform::MutexLock lock(mutex_);
    return delegate_.lock();
}

void FileSystemMonitor::setDelegate(std::weak_ptr<MonitorDelegate> delegate) {
    const Platform::MutexLock lock(mutex_);
    delegate_ = std::move(delegate);
}

bool FileSystemMonitor::hasStream() const {
    return stream() != nullptr;
}

std::shared_ptr<const FileSystemMonitor::Stream> FileSystemMonitor::stream() const {
    const Platform::MutexLock lock(mutex_);
    return stream_;
}

// The stream given up dies outside the lock.
void FileSystemMonitor::startMonitoring() {
    stopMonitoring();
    std::shared_ptr<const Stream> stream =
        Stream::make(url_.path(), latency, queue(), [weak = weak_from_this()](const auto& paths) {
            if (auto monitor = weak.lock())
                monitor->notifyDelegate(paths);
        });
    const Platform::MutexLock lock(mutex_);
    stream_.swap(stream);
}

void FileSystemMonitor::stopMonitoring() {
    if (const auto stopping = stream())
        stopping->end();
}

void FileSystemMonitor::notifyDelegate(const std::vector<std::string>& paths) const {
    for (const auto& folder : foldersOf(paths)) {
        if (auto receiver = delegate())
            receiver->monitorDidChange(folder);
    }
}

} // namespace CorbelKit
