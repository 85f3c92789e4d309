#pragma once

#include "Platform/ListenerEndpoint.h"

#include <string>

namespace Platform {

class ListenerEndpoint::Impl {
public:
    explicit Impl(std::string_view address)
        : address_(address) {}

    /// Of a D-Bus server, if the text is one.
    const std::string& address() const { return address_; }

private:
    const std::string address_;
};

} // namespace Platform
