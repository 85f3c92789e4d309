#pragma once

#include "CorbelKit/Monitors/SingleFolderMonitor.h"
#include "Platform/DispatchQueue.h"
#include "Platform/UserDefaults.h"

#include <functional>
#include <memory>
#include <optional>

namespace JobLink {

/// Notifies, on the main thread, of changes that may concern a job: in its folder, and of the list
/// of exceptions. Main thread.
class JobWatch {
public:
    /// Begins when the folder and the settings answer.
    JobWatch(const Platform::URL& folder, std::function<void()> changed);

    /// `changed` is not called any more.
    ~JobWatch();
    JobWatch(const JobWatch&) = delete;
    JobWatch& operator=(const JobWatch&) = delete;

private:
    class Delegate;
    using Observation = std::optional<Platform::UserDefaults::Observation>;

    // Either may hang.
    const Platform::DispatchQueue folderQueue_ =
        Platform::DispatchQueue::serialBlocking("com.tarnwell.JobWatch.folder");
    const Platform::DispatchQueue settingsQueue_ =
        Platform::DispatchQueue::serialBlocking("com.tarnwell.JobWatch.settings");
    const std::shared_ptr<Delegate> delegate_;
    const std::shared_ptr<CorbelKit::SingleFolderMonitor> monitor_;
    const std::shared_ptr<Observation> observation_ =
        std::make_shared<Observation>(); // its queue's
};

} // namespace JobLink
