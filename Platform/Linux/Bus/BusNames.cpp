#include "Platform/Linux/Bus/BusNames.h"

#include "Platform/Linux/Bus/BusWriter.h"

#include <utility>

namespace Platform {
namespace {

constexpr auto driver = "org.freedesktop.DBus";
constexpr auto driverPath = "/org/freedesktop/DBus";

/// Of the signals of the bus itself that concern the name.
BusSignalRule ruleFor(std::string signal, const std::string& name) {
    return {.sender = driver,
            .path = driverPath,
            .interface = driver,
            .name = std::move(signal),
            .firstArgument = name};
}

std::unique_ptr<BusSubscription> subscribe(BusConnection& connection, const std::string& name,
                                           const DispatchQueue& queue,
                                           std::weak_ptr<const BusNameWatch::Handler> weak) {
    return connection.subscribe(ruleFor("NameOwnerChanged", name), queue,
                                [weak = std::move(weak)](const BusSignal& signal) {
                                    const auto handler = weak.lock(); // may drop the watch
                                    if (handler && signal.type == "sss")
                                        (*handler)(*signal.values[2].get<std::string>());
                                });
}

} // namespace

BusMethod busDriverMethod(std::string name, std::string replyType) {
    return {.destination = driver,
            .path = driverPath,
            .interface = driver,
            .name = std::move(name),
            .replyType = std::move(replyType)};
}

// The news of the name is asked for before the name, so that none is missed.
BusNameClaim::BusNameClaim(BusConnection& connection, const std::string& name,
                           const DispatchQueue& queue, Handler handler)
    : handler_(std::make_shared<const Handler>(std::move(handler)))
    , acquisition_(connection.subscribe(ruleFor("NameAcquired", name), queue,
                                        [weak = std::weak_ptr(handler_)](const auto&) {
                                            if (const auto living = weak.lock())
                                                (*living)(State::owned);
                                        })) {
    constexpr std::uint32_t standInLine = 0;
    connection.call(busDriverMethod("RequestName", "u"), busArguments(name, standInLine),
                    busDeadlineIn(std::chrono::seconds(5)), queue,
                    [weak = std::weak_ptr(handler_)](const BusReply& reply) {
                        const PropertyList inQueue(std::int64_t{2});
                        const bool isInLine = reply.outcome == BusReply::Outcome::answered &&
                                              reply.values[0] == inQueue;
                        if (const auto living = weak.lock())
                            (*living)(isInLine ? State::inLine : State::owned);
                    });
}

// Asked after the bus was asked to report, so that no change falls between the two.
BusNameWatch::BusNameWatch(BusConnection& connection, const std::string& name,
                           const DispatchQueue& queue, Handler handler)
    : handler_(std::make_shared<const Handler>(std::move(handler)))
    , changes_(subscribe(connection, name, queue, handler_)) {
    connection.call(busDriverMethod("GetNameOwner", "s"), busArguments(name), BusDeadline::max(),
                    queue, [weak = std::weak_ptr(handler_)](const BusReply& reply) {
                        const auto living = weak.lock();
                        if (!living || reply.outcome == BusReply::Outcome::closed)
                            return; // the end of the connection is news of its own
                        const bool isOwned = reply.outcome == BusReply::Outcome::answered;
                        (*living)(isOwned ? *reply.values[0].get<std::string>() : std::string());
                    });
}

} // namespace Platform
