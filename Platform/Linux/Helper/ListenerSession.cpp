#include "Platform/Linux/Helper/ListenerSession.h"

#include "Platform/Linux/Bus/BusNames.h"
#include "Platform/Linux/Bus/BusWriter.h"
#include "Platform/Linux/Helper/HelperArguments.h"

#include <utility>

namespace Platform {
namespace {

constexpr auto patience = std::chrono::seconds(30); // with a bus that is there

BusAnswer busAnswer(const CallAnswer& answer) {
    if (!answer)
        return {.errorName = answer.error().name, .description = answer.error().description};
    if (answer->get<PropertyList::Null>() != nullptr)
        return {};
    return {.values = helperArguments({*answer})};
}

} // namespace

ListenerSession::ListenerSession(DispatchQueue queue, NativeListener::Events events)
    : queue_(std::move(queue))
    , events_(std::move(events)) {}

void ListenerSession::start(const MachServiceName& service) {
    auto route = findHelperRoute(service);
    if (!route) {
        lose(route.error().description);
        return;
    }
    route_ = std::move(*route);
    BusConnection::connect(route_.address, BusConnection::Peer::bus, busDeadlineIn(patience),
                           [weak = weak_from_this()](auto connection) {
                               const auto self = weak.lock();
                               if (!self)
                                   return;
                               self->queue_.async([self, connection = std::move(connection)] {
                                   self->connected(connection);
                               });
                           });
}

// The calls that the bus has kept for the helper come as soon as it has the name.
void ListenerSession::connected(Expected<std::shared_ptr<BusConnection>> connection) {
    if (isEnded_)
        return;
    if (!connection) {
        lose(connection.error().description);
        return;
    }
    connection_ = std::move(*connection);
    const auto weak = weak_from_this();
    connection_->serve({.path = route_.path, .interface = route_.interface}, [weak](BusCall call) {
        if (const auto self = weak.lock()) {
            self->events_.called(
                call.number, call.sender,
                {.method = std::move(call.name), .arguments = std::move(call.values)});
        }
    });
    connection_->whenClosed(queue_, [weak](const std::string& /*reason*/) {
        if (const auto self = weak.lock())
            self->lose("the message bus went away");
    });
    constexpr std::uint32_t doNotQueue = 4;
    connection_->call(busDriverMethod("RequestName", "u"),
                      busArguments(route_.destination, doNotQueue), busDeadlineIn(patience), queue_,
                      [weak](const BusReply& reply) {
                          if (const auto self = weak.lock())
                              self->named(reply);
                      });
}

void ListenerSession::named(const BusReply& reply) {
    const PropertyList owner(std::int64_t{1});
    if (reply.outcome != BusReply::Outcome::answered) {
        lose(reply.description);
    } else if (reply.values[0] != owner) {
        lose("another process has the name " + route_.destination);
    }
}

void ListenerSession::lose(const std::string& reason) {
    if (isEnded_)
        return;
    end();
    events_.invalidated(reason);
}

void ListenerSession::answer(std::uint64_t number, const CallAnswer& answer) {
    if (connection_)
        connection_->answer(number, busAnswer(answer));
}

void ListenerSession::end() {
    isEnded_ = true;
    connection_.reset();
}

} // namespace Platform
