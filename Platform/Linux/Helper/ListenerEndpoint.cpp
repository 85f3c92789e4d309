#include "Platform/ListenerEndpoint.h"

#include "Platform/Linux/Helper/ListenerEndpointImpl.h"

#include <utility>

namespace Platform {

ListenerEndpoint::ListenerEndpoint(std::string_view address)
    : impl_(std::make_shared<Impl>(address)) {}

ListenerEndpoint::ListenerEndpoint(std::shared_ptr<const Impl> impl)
    : impl_(std::move(impl)) {}

} // namespace Platform
