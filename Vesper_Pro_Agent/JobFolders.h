#pragma once

#include "Platform/URL.h"

#include <vector>

namespace Vesper_Pro_Agent {

/// The folders in which launchd jobs are installed, in the order in which they are watched and
/// scanned: the user's agents, then all users' agents, daemons, startup items and privileged helper
/// tools. A user without a home folder has no agents of their own. After them those where the
/// system itself looks for what it starts, each folder once. Found once and then kept.
const std::vector<Platform::URL>& jobFolders();

} // namespace Vesper_Pro_Agent
