#pragma once

#include "Platform/ConnectionListener.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace Platform {

/// What the system itself has for a `ConnectionListener` from its start on. It keeps no account but
/// of whom to answer. Callable on any thread.
class NativeListener {
public:
    /// What the system reports, on any thread, and never within a call of this class.
    /// The object may be destroyed meanwhile.
    struct Events {
        /// A client, by what tells it from others, calls. Each call has a number of its own, and is
        /// answered once.
        std::function<void(std::uint64_t number, const std::string& client,
                           ConnectionListener::Call call)>
            called;
        /// Nothing more will come.
        std::function<void(std::string reason)> invalidated;
    };

    /// Begins to listen.
    NativeListener(const MachServiceName& service, Events events);

    /// Ends that; an event may still come.
    ~NativeListener();
    NativeListener(const NativeListener&) = delete;
    NativeListener& operator=(const NativeListener&) = delete;
    NativeListener(NativeListener&&) = delete;
    NativeListener& operator=(NativeListener&&) = delete;

    /// The value can be sent, and a refusal has a proper name.
    void answer(std::uint64_t number, CallAnswer answer);

private:
    class Impl;

    const std::unique_ptr<Impl> impl_;
};

} // namespace Platform
