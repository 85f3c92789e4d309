#include "Platform/ListenerEndpoint.h"

#include "Platform/macOS/ListenerEndpointImpl.h"

#include <utility>

namespace Platform {

// Endpoints pass from process to process within messages alone.
ListenerEndpoint::ListenerEndpoint(std::string_view)
    : impl_(std::make_shared<Impl>(nil)) {}

ListenerEndpoint::ListenerEndpoint(std::shared_ptr<const Impl> impl)
    : impl_(std::move(impl)) {}

} // namespace Platform
