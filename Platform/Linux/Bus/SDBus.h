#pragma once

#include <systemd/sd-bus.h>

#include <memory>

/// libsystemd's objects, each with one owner. None of them is safe on two threads.
namespace Platform::SDBus {

template <auto release>
struct Release {
    template <class T>
    void operator()(T* object) const {
        release(object);
    }
};

/// Closed when it goes; what was not sent by then is not sent.
using BusPtr = std::unique_ptr<sd_bus, Release<sd_bus_close_unref>>;
using MessagePtr = std::unique_ptr<sd_bus_message, Release<sd_bus_message_unref>>;

/// A call or a match: called no more once it has gone.
using SlotPtr = std::unique_ptr<sd_bus_slot, Release<sd_bus_slot_unref>>;

} // namespace Platform::SDBus
