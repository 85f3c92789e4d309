#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/UserDefaults.h"
#include "Vesper_Pro_Agent/ChangePosting.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Vesper_Pro_Agent {

/// The labels of which the user does not want to be notified, and the beginnings of such labels:
/// read from the shared settings on first use, and then kept until a change of them is observed.
/// The main thread's, but for `observeValueForKeyPath`; it never waits for the files, which may
/// hang.
class ReportingSettings : public std::enable_shared_from_this<ReportingSettings> {
public:
    /// Follows the settings from now on. The completion is called on the main thread when it does,
    /// or would take long.
    void observe(std::function<void()> completion);

    /// Calls the completion, on the main thread, when both lists were read, or when that would take
    /// long: the filter then has what was read before, if anything.
    void whenRead(std::function<void()> completion);

    ChangeFilter filter() const;

    /// Called on any thread when a setting has changed: reads the list anew that is kept under the
    /// key, and none where there is no key or another one.
    void observeValueForKeyPath(const std::optional<std::string>& keyPath);

private:
    using List = std::vector<std::string>;

    void read(std::optional<List> ReportingSettings::* list);

    const Platform::DispatchQueue queue_ =
        Platform::DispatchQueue::serialBlocking("com.tarnwell.ReportingSettings");
    std::optional<List> exceptions_;
    std::optional<List> excludePrefixes_;
    bool isReading_ = false; // or has read; what then took long is not waited for once more
    std::vector<Platform::UserDefaults::Observation> observations_; // on the queue only
};

} // namespace Vesper_Pro_Agent
