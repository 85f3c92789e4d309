#pragma once

#include <string>

/// The leave to come to the front that the desktop gave with the user's latest answer, for what is
/// opened because of it (XDG activation token, or X11 start-up identifier). Any thread.
namespace Platform {

/// Takes the place of the token before; empty where the answer came without one.
void setActivationToken(std::string token);

/// A token counts once: empty where none was set since it was last taken.
std::string takeActivationToken();

} // namespace Platform
