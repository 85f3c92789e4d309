#pragma once

/// The window that explains to the user the system's question about a new background item, which is
/// about to come, and offers to open the settings in which the item is allowed. For applications
/// that register one: what they wanted it for fails until the user agrees.
namespace CorbelKit::AllowBackgroundItem {

/// Shows the window, the same one each time; after the alerts, where some are up. Nothing, where
/// its layout is not among the kit's resources or the session has no windows. Main thread, in an
/// application that is running.
void show();

} // namespace CorbelKit::AllowBackgroundItem
