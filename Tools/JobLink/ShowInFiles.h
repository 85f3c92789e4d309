#pragma once

#include "Tools/JobLink/Core/JobPlace.h"

#include <functional>

namespace JobLink {

/// Has the desktop show the file in its folder, or else the folder. `failed` is called where
/// nothing on this desktop shows folders. Main thread, in an application that is running.
void showInFiles(const JobPlace& place, std::function<void()> failed);

} // namespace JobLink
