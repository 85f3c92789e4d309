#pragma once

#include "CorbelKit/Monitors/MonitorType.h"
#include "Platform/DispatchQueue.h"
#include "Platform/FileSystemEventStream.h"
#include "Platform/Mutex.h"

#include <memory>
#include <string>
#include <vector>

namespace CorbelKit {

/// Watches a whole tree and notifies its delegate of the folders that had something change: each
/// folder once, with its own URL, for all that happened within a second. An item that was made,
/// written, renamed or removed is a change of the folder that holds it.
///
/// Where that folder, or one above it, has moved within the tree by then, the call may come with
/// the URL from before the move. The move itself is a change of the folder that held what moved and
/// of the one that holds it, notified with the same batch or a later one, and stands for all that
/// is below. So may a call where a folder came into the tree together with what is in it, and where
/// the system lost count of changes. None says so: who keeps account of a tree looks below as well,
/// and then misses nothing, wherever it went.
///
/// The monitor is for the location, whatever lies there: it is silent while there is nothing, and
/// notifies of what comes to lie there, again or in the place of another, whenever that is.
class FileSystemMonitor final : public MonitorType,
                                public std::enable_shared_from_this<FileSystemMonitor> {
    struct Private {
        explicit Private() = default;
    };

public:
    /// A monitor that already watches.
    static std::shared_ptr<FileSystemMonitor> make(const Platform::URL& url);

    /// For `make`.
    FileSystemMonitor(Private, const Platform::URL& url);
    ~FileSystemMonitor() override;
    FileSystemMonitor(const FileSystemMonitor&) = delete;
    FileSystemMonitor& operator=(const FileSystemMonitor&) = delete;
    FileSystemMonitor(FileSystemMonitor&&) = delete;
    FileSystemMonitor& operator=(FileSystemMonitor&&) = delete;

    /// With all symbolic links resolved, as are the URLs that the delegate gets.
    const Platform::URL& url() const override { return url_; }

    std::shared_ptr<MonitorDelegate> delegate() const override;
    void setDelegate(std::weak_ptr<MonitorDelegate> delegate) override;

    /// Makes and starts a stream, in place of the one before. Idle when the system makes none.
    void startMonitoring() override;

    /// Ends the events; the stream stays, at its end.
    void stopMonitoring() override;

    /// Whether a stream was made, be it stopped by now.
    bool hasStream() const;

    /// The one queue on which all monitors of this type call their delegates.
    static Platform::DispatchQueue queue();

private:
    using Stream = Platform::FileSystemEventStream;

    void notifyDelegate(const std::vector<std::string>& paths) const;
    std::shared_ptr<const Stream> stream() const;

    const Platform::URL url_;

    // The owner's thread and the monitors' queue meet in these.
    mutable Platform::Mutex mutex_;
    std::shared_ptr<const Stream> stream_ CORBEL_GUARDED_BY(mutex_);
    std::weak_ptr<MonitorDelegate> delegate_ CORBEL_GUARDED_BY(mutex_);
};

} // namespace CorbelKit
