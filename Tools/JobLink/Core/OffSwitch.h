#pragma once

#include "Platform/Expected.h"
#include "Tools/JobLink/Core/JobDescription.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace JobLink {

/// Turns a job off for this user alone, where the system has a way: a desktop entry by a copy in
/// the user's autostart folder that says "Hidden=true", a unit of the user's that can be
/// enabled again by systemctl. Nothing of the system's own is written, and no rights are asked for.
/// All but `kind` block.
class OffSwitch {
public:
    enum class Kind : std::uint8_t { none, desktopEntry, userUnit };

    /// Of the job as it was read.
    OffSwitch(const JobPlace& place, const JobDescription& description);

    Kind kind() const { return kind_; }

    /// Whether the job is off, by what it says itself or by what the user has beside it. What
    /// cannot be found out is not off.
    bool isOff() const;

    /// Gives the reason where it is still on.
    std::optional<Platform::Error> turnOff();

    /// Takes back what `turnOff` did here, byte for byte. Gives the reason where that cannot be, as
    /// when somebody else has changed it since.
    std::optional<Platform::Error> turnOn();

private:
    using Bytes = std::vector<std::byte>;

    std::optional<Platform::Error> hideEntry();
    std::optional<Platform::Error> restoreEntry();
    std::optional<Platform::Error> setUnitEnabled(bool isEnabled) const;
    std::string unitState() const;

    JobPlace place_;
    Kind kind_ = Kind::none;
    bool saysItIsOff_ = false;
    std::optional<Bytes> before_; ///< the user's entry, if there was one
    Bytes after_;                 ///< what it was replaced by; empty: nothing was
};

/// The desktop entry with "Hidden=true" in its group, as all who start entries read it, and nothing
/// else changed; absent where that cannot be, as without such a group.
std::optional<std::string> hiddenEntry(std::string_view content);

} // namespace JobLink
