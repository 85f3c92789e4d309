#pragma once

namespace Platform {

/// Whether the process runs in a desktop's session, as far as its environment says: the desktop may
/// start services that the bus knows nothing of. Any thread, while nobody changes the environment.
bool isDesktopSession();

} // namespace Platform
