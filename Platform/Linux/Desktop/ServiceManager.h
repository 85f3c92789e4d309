#pragma once

#include <string_view>

namespace Platform {

/// Notifies the service manager that started the process of its state ("READY=1"), by the protocol
/// of sd_notify(3). Nothing happens where no manager listens.
void notifyServiceManager(std::string_view state);

} // namespace Platform
