#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/Expected.h"
#include "Platform/UserDefaults.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace JobLink {

/// One of the two lists of what the agent is silent about, as it is in the settings that it shares
/// with this program, and as anybody makes it. Main thread, which does not wait for the disk.
class SettingList final : public std::enable_shared_from_this<SettingList> {
    struct Private {
        explicit Private() = default;
    };

public:
    using Observer = std::function<void(const std::vector<std::string>& texts)>;

    /// The observer is called on the main thread, with the list as it is and after each change.
    static std::shared_ptr<SettingList> make(std::string_view key, Observer observer);

    /// For `make`.
    SettingList(Private, std::string_view key, Observer observer);

    /// Adds the text, or removes it. The completion is called on the main thread, with the reason
    /// where the list stays as it was.
    void set(std::string text, bool isListed,
             std::function<void(std::optional<Platform::Error>)> completion) const;

private:
    void read() const;

    const std::string key_;
    const Observer observer_;
    const Platform::DispatchQueue queue_ =
        Platform::DispatchQueue::serialBlocking("com.tarnwell.SettingList");
    std::optional<Platform::UserDefaults::Observation> observation_; // on the queue only
};

} // namespace JobLink
