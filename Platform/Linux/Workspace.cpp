#include "Platform/Workspace.h"

namespace Platform::Workspace {

std::optional<std::string> menuBarOwningApplicationName() {
    // The back end holds no connection to a window system, so it has no way to tell.
    return std::nullopt;
}

} // namespace Platform::Workspace
