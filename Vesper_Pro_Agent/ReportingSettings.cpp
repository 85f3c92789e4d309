#include "Vesper_Pro_Agent/ReportingSettings.h"

#include "CorbelKit/Services/Defaults.h"
#include "CorbelKit/Services/SharedSettings.h"
#include "Platform/MainThread.h"
#include "Vesper_Pro_Agent/PatientWork.h"

#include <utility>

namespace Vesper_Pro_Agent {
namespace {

namespace Defaults = CorbelKit::Defaults;
namespace SharedSettings = CorbelKit::SharedSettings;

} // namespace

void ReportingSettings::observe(std::function<void()> completion) {
    const auto begin = [self = shared_from_this()] {
        const auto suite = SharedSettings::suite();
        if (!suite)
            return;
        for (const auto key : {Defaults::exceptions, Defaults::excludePrefixes}) {
            self->observations_.push_back(
                suite->observe(std::string(key),
                               [weak = self->weak_from_this()](const auto& keyPath, const auto&) {
                                   if (auto settings = weak.lock())
                                       settings->observeValueForKeyPath(keyPath);
                               }));
        }
    };
    workPatiently(queue_, {begin}, std::move(completion));
}

void ReportingSettings::whenRead(std::function<void()> completion) {
    Platform::MainThread::check();
    if ((exceptions_ && excludePrefixes_) || std::exchange(isReading_, true)) {
        completion();
        return;
    }
    const auto readBoth = [self = shared_from_this()] {
        self->read(&ReportingSettings::exceptions_);
        self->read(&ReportingSettings::excludePrefixes_);
    };
    workPatiently(queue_, {readBoth}, std::move(completion));
}

ChangeFilter ReportingSettings::filter() const {
    Platform::MainThread::check();
    return {exceptions_.value_or(List()), excludePrefixes_.value_or(List())};
}

void ReportingSettings::observeValueForKeyPath(const std::optional<std::string>& keyPath) {
    const auto reload = [this](std::optional<List> ReportingSettings::* list) {
        queue_.async([self = shared_from_this(), list] { self->read(list); });
    };
    if (keyPath == Defaults::exceptions) {
        reload(&ReportingSettings::exceptions_);
    } else if (keyPath == Defaults::excludePrefixes) {
        reload(&ReportingSettings::excludePrefixes_);
    }
}

// On the queue.
void ReportingSettings::read(std::optional<List> ReportingSettings::* list) {
    auto texts = list == &ReportingSettings::exceptions_ ? SharedSettings::readExceptions()
                                                         : SharedSettings::readExcludePrefixes();
    Platform::MainThread::run(
        [self = shared_from_this(), list, texts = std::move(texts)] { (*self).*list = texts; });
}

} // namespace Vesper_Pro_Agent
