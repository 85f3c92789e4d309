#include "Platform/SystemObservers.h"

namespace Platform {

void postToSystemObservers(std::string_view /*name*/) {}

} // namespace Platform
