#include "Tools/JobLink/JobWatch.h"

#include "CorbelKit/Services/Defaults.h"
#include "CorbelKit/Services/SharedSettings.h"
#include "Platform/MainThread.h"

#include <string>
#include <utility>

namespace JobLink {

/// Takes what comes on other threads to the main one.
class JobWatch::Delegate final : public CorbelKit::MonitorDelegate,
                                 public std::enable_shared_from_this<Delegate> {
public:
    explicit Delegate(std::function<void()> changed)
        : changed_(std::move(changed)) {}

    void monitorDidChange(const Platform::URL& /*url*/) override { notify(); }

    void notify() {
        Platform::MainThread::run([weak = weak_from_this()] {
            const auto self = weak.lock();
            if (self && self->changed_)
                self->changed_();
        });
    }

    void silence() { changed_ = nullptr; }

private:
    std::function<void()> changed_; // main thread
};

JobWatch::JobWatch(const Platform::URL& folder, std::function<void()> changed)
    : delegate_(std::make_shared<Delegate>(std::move(changed)))
    , monitor_(CorbelKit::SingleFolderMonitor::makeIdle(folder)) {
    monitor_->setDelegate(delegate_);
    folderQueue_.async([monitor = monitor_] { monitor->startMonitoring(); });
    settingsQueue_.async([observation = observation_, weak = std::weak_ptr(delegate_)] {
        const auto suite = CorbelKit::SharedSettings::suite();
        if (!suite)
            return;
        const auto notify = [weak](const auto& /*key*/, const auto& /*value*/) {
            if (const auto self = weak.lock())
                self->notify();
        };
        *observation = suite->observe(std::string(CorbelKit::Defaults::exceptions), notify);
    });
}

JobWatch::~JobWatch() {
    delegate_->silence();
    folderQueue_.async([monitor = monitor_] { monitor->stopMonitoring(); });
    settingsQueue_.async([observation = observation_] { observation->reset(); });
}

} // namespace JobLink
