#pragma once

#include "Tools/JobLink/Core/JobDescription.h"

#include <string_view>

/// What each kind of job file says. The descriptions come with their kind.
namespace JobLink::Dialects {

/// @{
/// Of the file's content, whatever that is.
JobDescription describeDesktopEntry(std::string_view content);
JobDescription describeCronTable(std::string_view content);
/// @}

/// The name says which kind of unit it is.
JobDescription describeUnit(std::string_view name, std::string_view content);

/// Whether a file of the name is a unit.
bool isUnit(std::string_view name);

/// A script is what it runs. (LSB Core 5.0, section 22.3)
JobDescription describeInitScript(const JobPlace& place, std::string_view content);

/// Of a property list; of kind other where it is none, or no job's. (launchd.plist(5))
JobDescription describeLaunchdJob(std::span<const std::byte> content);

} // namespace JobLink::Dialects
