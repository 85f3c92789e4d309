#pragma once

#include "Platform/Linux/Bus/BusMessage.h"
#include "Platform/Linux/Bus/BusReader.h"
#include "Platform/Linux/Bus/SDBus.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace Platform {

/// A message that has arrived, and is read in steps of a bounded time. On the buses' thread.
class BusArrival {
public:
    /// Shares the message.
    BusArrival(std::uint64_t number, sd_bus_message* message);

    /// The number of whom it is for.
    std::uint64_t number() const { return number_; }

    /// Whether it may be of the sender that a rule names. A rule does not bind what a peer sends to
    /// this connection alone, in which the peer may pretend to be the bus.
    bool mayComeFrom(std::string_view sender) const;

    /// The next step of reading it as the answer to a call; absent while it is not at its end.
    std::optional<BusReply> readReply(const BusMethod& method, BusDeadline deadline);

    /// The next step of reading it as a signal.
    BusReader::State readSignal();

    /// Once, when it is read.
    BusSignal takeSignal();

    /// The next step of reading it as a call.
    BusReader::State readCall();

    /// Once, when it is read.
    BusCall takeCall();

    /// To answer it.
    const SDBus::MessagePtr& message() const { return message_; }

private:
    BusReader::State readValues();

    std::uint64_t number_;
    SDBus::MessagePtr message_;
    std::unique_ptr<BusReader> reader_;
};

} // namespace Platform
