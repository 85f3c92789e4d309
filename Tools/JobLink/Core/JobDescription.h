#pragma once

#include "Tools/JobLink/Core/JobFile.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace JobLink {

/// One reason for which a job is started, or a condition of that.
struct JobStart {
    enum class Kind : std::uint8_t {
        login,       ///< by the desktop
        load,        ///< when its service manager takes it up
        systemStart, ///< of the machine
        kept,        ///< started anew whenever it ends
        interval,    ///< detail: seconds
        calendar,    ///< detail: as cron or systemd writes it
        timer,       ///< detail: the setting
        change,      ///< detail: of which file or folder
        mount,       ///< of any disk
        demand,      ///< detail: by whom
        with,        ///< detail: which unit or runlevels
        onlyIn,      ///< detail: desktops
        notIn,       ///< detail: desktops
        onlyIf,      ///< detail: what has to be there
        more,        ///< reasons than can be shown
    };

    Kind kind;
    std::string detail{};

    friend bool operator==(const JobStart&, const JobStart&) = default;
};

/// What a job file says, in texts that are safe to show on one line each, of a size and number that
/// can be shown. A plain value.
struct JobDescription {
    enum class Kind : std::uint8_t {
        other, ///< what it is not known to say
        launchdJob,
        desktopEntry,
        unit,      ///< of systemd
        cronTable, ///< of those that name a user in each line
        initScript,
    };

    Kind kind = Kind::other;
    std::string title{};             ///< what it calls itself; empty where it does not
    std::vector<std::string> runs{}; ///< commands, units
    std::vector<JobStart> starts{};
    bool isTurnedOff = false;   ///< by what the file itself says, however it is read
    bool isInstallable = false; ///< a unit that says how it is enabled, and so again
};

/// Of a file at the place with the content. Any bytes may be in it.
JobDescription describeJob(const JobPlace& place, std::span<const std::byte> content);

/// Likewise, of what may not have been read.
JobDescription describeJob(const JobPlace& place, const JobFile& file);

} // namespace JobLink
