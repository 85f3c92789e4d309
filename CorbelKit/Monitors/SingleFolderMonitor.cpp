#include "CorbelKit/Monitors/SingleFolderMonitor.h"

#include "Platform/FileHandle.h"
#include "Platform/FileManager.h"
#include "Platform/NeverDestroyed.h"

#include <utility>

namespace CorbelKit {

using Platform::DispatchQueue;
using Platform::FileSystemObjectSource;

DispatchQueue SingleFolderMonitor::queue() {
    static const Platform::NeverDestroyed<DispatchQueue> queue(
        DispatchQueue::concurrent("com.tarnwell.SingleFolderMonitor"));
    return queue.get();
}

std::shared_ptr<SingleFolderMonitor> SingleFolderMonitor::make(Platform::URL url) {
    auto monitor = makeIdle(std::move(url));
    monitor->startMonitoring();
    return monitor;
}

std::shared_ptr<SingleFolderMonitor> SingleFolderMonitor::makeIdle(Platform::URL url) {
    return std::make_shared<SingleFolderMonitor>(Private(), std::move(url));
}

SingleFolderMonitor::SingleFolderMonitor(Private, Platform::URL url)
    : url_(std::move(url)) {}

// The cancel handler will find no monitor any more, so the descriptor stays open.
SingleFolderMonitor::~SingleFolderMonitor() {
    stopMonitoring();
}

std::shared_ptr<MonitorDelegate> SingleFolderMonitor::delegate() const {
    const Platform::MutexLock lock(mutex_);
    return delegate_.lock();
}

void SingleFolderMonitor::setDelegate(std::weak_ptr<MonitorDelegate> delegate) {
    const Platform::MutexLock lock(mutex_);
    delegate_ = std::move(delegate);
}

int SingleFolderMonitor::fileDescriptor() const {
    const Platform::MutexLock lock(mutex_);
    return fileDescriptor_;
}

bool SingleFolderMonitor::hasSource() const {
    const Platform::MutexLock lock(mutex_);
    return source_ != nullptr;
}

void SingleFolderMonitor::startMonitoring() {
    if (!Platform::FileManager::fileExists(url_))
        return;
    const int opened = FileSystemObjectSource::openForEvents(url_);
    {
        const Platform::MutexLock lock(mutex_);
        fileDescriptor_ = opened;
    }
    if (opened == -1)
        return;

    auto source = std::make_shared<FileSystemObjectSource>(opened, queue());
    source->setEventHandler([weak = weak_from_this()] {
        if (auto monitor = weak.lock())
            monitor->notifyDelegate();
    });
    // Each step looks again: the monitor may go between any two of them.
    source->setCancelHandler([weak = weak_from_this()] {
        if (auto monitor = weak.lock())
            monitor->closeFileDescriptor();
        if (auto monitor = weak.lock())
            monitor->forgetFileDescriptor();
        if (auto monitor = weak.lock())
            monitor->forgetSource();
    });
    exchangeSource(source);
    source->resume();
}

void SingleFolderMonitor::stopMonitoring() {
    std::shared_ptr<Source> source;
    {
        const Platform::MutexLock lock(mutex_);
        source = source_;
    }
    if (source)
        source->cancel();
}

void SingleFolderMonitor::notifyDelegate() const {
    if (auto receiver = delegate())
        receiver->monitorDidChange(url_);
}

void SingleFolderMonitor::closeFileDescriptor() {
    Platform::FileHandle handle(fileDescriptor());
    static_cast<void>(handle.close());
}

void SingleFolderMonitor::forgetFileDescriptor() {
    const Platform::MutexLock lock(mutex_);
    fileDescriptor_ = -1;
}

void SingleFolderMonitor::forgetSource() {
    exchangeSource(nullptr);
}

// The source given up dies outside the lock.
std::shared_ptr<SingleFolderMonitor::Source>
SingleFolderMonitor::exchangeSource(std::shared_ptr<Source> source) {
    const Platform::MutexLock lock(mutex_);
    return std::exchange(source_, std::move(source));
}

} // namespace CorbelKit
