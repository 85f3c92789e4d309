#pragma once

#include "Platform/URL.h"

#include <memory>

namespace CorbelKit {

/// Notified by a monitor that its location changed.
class MonitorDelegate {
public:
    virtual ~MonitorDelegate() = default;

    /// Called on the monitor's queue, never on the main thread, and possibly for several monitors
    /// at once. The URL is that of the location or of a folder in it; what changed there is not
    /// said.
    ///
    /// The threads that call are few, and all queues share them, timers too: a call must not wait
    /// for another call, for the task of a queue, for the main thread, or for what may take its
    /// time, as a dead network's disk. Such work goes to `DispatchQueue::blocking`, or to the main
    /// thread by `MainThread::run`.
    virtual void monitorDidChange(const Platform::URL& url) = 0;

protected:
    MonitorDelegate() = default;
    MonitorDelegate(const MonitorDelegate&) = default;
    MonitorDelegate& operator=(const MonitorDelegate&) = default;
};

/// A watch over one location of the file system. Callable on any thread.
class MonitorType {
public:
    virtual ~MonitorType() = default;

    /// The location that is watched.
    virtual const Platform::URL& url() const = 0;

    /// Held weakly; null when there is none or it is gone. Events without a delegate are dropped.
    virtual std::shared_ptr<MonitorDelegate> delegate() const = 0;
    /// In place of the one before. Weakly held: the caller keeps it.
    virtual void setDelegate(std::weak_ptr<MonitorDelegate> delegate) = 0;

    /// Begins to notify the delegate. A location that cannot be watched is no error: there is no
    /// call.
    virtual void startMonitoring() = 0;
    /// Ends that; a call under way goes on. A second stop does nothing.
    virtual void stopMonitoring() = 0;

protected:
    MonitorType() = default;
    MonitorType(const MonitorType&) = default;
    MonitorType& operator=(const MonitorType&) = default;
};

} // namespace CorbelKit
