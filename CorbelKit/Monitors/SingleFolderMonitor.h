#pragma once

#include "CorbelKit/Monitors/MonitorType.h"
#include "Platform/DispatchQueue.h"
#include "Platform/FileSystemObjectSource.h"
#include "Platform/Mutex.h"

#include <memory>

namespace CorbelKit {

/// Watches one folder and notifies its delegate each time an entry of it is added, removed or given
/// another name. Writing into a file of the folder is no such event.
///
/// Idle (no descriptor) when the folder is missing or cannot be opened, and again once stopped; a
/// folder that appears later is not picked up. A folder that is itself moved or deleted stays the
/// one watched, without further events.
class SingleFolderMonitor final : public MonitorType,
                                  public std::enable_shared_from_this<SingleFolderMonitor> {
    struct Private {
        explicit Private() = default;
    };

public:
    /// A monitor that already watches, if the folder exists.
    static std::shared_ptr<SingleFolderMonitor> make(Platform::URL url);

    /// A monitor that is idle until `startMonitoring`, which may take as long as the folder's file
    /// system does.
    static std::shared_ptr<SingleFolderMonitor> makeIdle(Platform::URL url);

    /// For `make` and `makeIdle`.
    SingleFolderMonitor(Private, Platform::URL url);

    /// A monitor that is destroyed while it watches leaves its descriptor open: only a stop that
    /// has run its course closes it.
    ~SingleFolderMonitor() override;
    SingleFolderMonitor(const SingleFolderMonitor&) = delete;
    SingleFolderMonitor& operator=(const SingleFolderMonitor&) = delete;
    SingleFolderMonitor(SingleFolderMonitor&&) = delete;
    SingleFolderMonitor& operator=(SingleFolderMonitor&&) = delete;

    const Platform::URL& url() const override { return url_; }

    std::shared_ptr<MonitorDelegate> delegate() const override;
    void setDelegate(std::weak_ptr<MonitorDelegate> delegate) override;

    /// Meant to run once, by `make` or after `makeIdle`. A second run leaves the earlier descriptor
    /// open.
    void startMonitoring() override;

    /// Ends the events. The descriptor is closed a little later, on the monitors' queue.
    void stopMonitoring() override;

    /// -1 whenever no descriptor is open.
    int fileDescriptor() const;

    /// Whether the folder could be opened, and the source is not cancelled yet.
    bool hasSource() const;

    /// The one queue on which all monitors of this type call their delegates.
    static Platform::DispatchQueue queue();

private:
    using Source = Platform::FileSystemObjectSource;

    void notifyDelegate() const;
    void closeFileDescriptor();
    void forgetFileDescriptor();
    void forgetSource();
    std::shared_ptr<Source> exchangeSource(std::shared_ptr<Source> source);

    const Platform::URL url_;

    // The owner's thread and the monitors' queue meet in these.
    mutable Platform::Mutex mutex_;
    int fileDescriptor_ CORBEL_GUARDED_BY(mutex_) = -1;
    std::shared_ptr<Source> source_ CORBEL_GUARDED_BY(mutex_);
    std::weak_ptr<MonitorDelegate> delegate_ CORBEL_GUARDED_BY(mutex_);
};

} // namespace CorbelKit
