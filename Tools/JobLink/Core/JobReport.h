#pragma once

#include "Tools/JobLink/Core/JobDescription.h"
#include "Tools/JobLink/Core/OffSwitch.h"

#include <optional>
#include <string>

namespace JobLink {

/// All that the window shows of a job, found out at one time. A plain value.
struct JobReport {
    std::optional<JobFile> file; ///< absent: it is not there
    std::string owner;           ///< the file's user and group, by name or else by number
    JobDescription description;
    OffSwitch offSwitch;
    bool isOff = false;
    bool isExcepted = false; ///< the user is not notified of its changes
};

/// Waits for the file system and for tools of the system, so not for the main thread.
JobReport readJobReport(const JobPlace& place);

/// What is the matter with the file, in the user's language; empty where all is as usual.
std::string stateText(const JobPlace& place, const JobReport& report);

} // namespace JobLink
