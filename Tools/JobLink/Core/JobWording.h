#pragma once

#include "Tools/JobLink/Core/JobDescription.h"

#include <chrono>
#include <string>

/// What is said of a job, in the user's language. Callable on any thread.
namespace JobLink {

/// One reason or condition.
std::string startText(const JobStart& start);

/// All of them, with commas between; what is said where there are none.
std::string startsText(const JobDescription& description);

/// Of the clock that the user has, in the form of ISO 8601.
std::string timeText(std::chrono::sys_seconds time);

/// Such as "u=rw-,g=r--,o=r-- 644".
std::string permissionsText(unsigned permissions);

} // namespace JobLink
