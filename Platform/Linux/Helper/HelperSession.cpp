#include "Platform/Linux/Helper/HelperSession.h"

#include "Platform/Linux/Helper/HelperArguments.h"

#include <utility>

namespace Platform {
namespace {

using Kind = ConnectionError::Kind;
using Outcome = BusReply::Outcome;

constexpr auto helperGone = "the helper went away";

ConnectionReply valueOf(PropertyList::Array values) {
    if (values.empty())
        return PropertyList();
    if (values.size() > 1) {
        return ConnectionError{.kind = Kind::badReply,
                               .description = "an answer of several values"};
    }
    return std::move(values.front());
}

ConnectionReply meaningOf(BusReply reply) {
    switch (reply.outcome) {
    case Outcome::answered:
        return valueOf(std::move(reply.values));
    case Outcome::unreadable:
        return ConnectionError{.kind = Kind::badReply, .description = std::move(reply.description)};
    case Outcome::unsent:
        return ConnectionError{.kind = Kind::badCall, .description = std::move(reply.description)};
    case Outcome::refused:
        return ConnectionError{.kind = Kind::refused,
                               .description = std::move(reply.description),
                               .name = std::move(reply.errorName)};
    case Outcome::late:
        return ConnectionError{.kind = Kind::timedOut, .description = std::move(reply.description)};
    default:
        return ConnectionError{.kind = Kind::interrupted,
                               .description = std::move(reply.description)};
    }
}

} // namespace

HelperSession::HelperSession(DispatchQueue queue, NativeConnection::Events events)
    : queue_(std::move(queue))
    , events_(std::move(events)) {}

void HelperSession::start(const ConnectionAddress& address) {
    auto route = findHelperRoute(address);
    if (!route) {
        lose(route.error().description);
        return;
    }
    route_ = std::move(*route);
    connect();
}

void HelperSession::call(Call call) {
    if (isEnded_)
        return;
    if (connection_) {
        send(std::move(call));
    } else {
        waiting_.push_back(std::move(call));
        if (!isConnecting_)
            connect(); // a helper without a bus that went away: anew
    }
}

void HelperSession::end() {
    isEnded_ = true;
    waiting_.clear();
    nameWatch_.reset();
    peerWatch_.reset();
    connection_.reset();
}

void HelperSession::connect() {
    isConnecting_ = true;
    const auto peer = isOverBus() ? BusConnection::Peer::bus : BusConnection::Peer::process;
    BusConnection::connect(
        route_.address, peer, BusDeadline::max(),
        [queue = queue_, task = handler(&HelperSession::connected)](auto connection) {
            queue.async([task, connection = std::move(connection)] { task(connection); });
        });
}

void HelperSession::connected(Expected<std::shared_ptr<BusConnection>> connection) {
    isConnecting_ = false;
    if (!connection) {
        lose(connection.error().description);
        return;
    }
    connection_ = std::move(*connection);
    connection_->whenClosed(
        queue_, [task = handler(&HelperSession::closed)](const auto& /*why*/) { task(); });
    if (isOverBus()) {
        nameWatch_ = std::make_unique<BusNameWatch>(*connection_, route_.destination, queue_,
                                                    handler(&HelperSession::ownerChanged));
    }
    for (auto& call : std::exchange(waiting_, {}))
        send(std::move(call));
}

void HelperSession::closed() {
    nameWatch_.reset();
    peerWatch_.reset();
    connection_.reset();
    if (isOverBus()) {
        lose("the message bus went away");
    } else {
        events_.interrupted(helperGone);
    }
}

// A helper that lets go of its name may still answer what it was asked; it is lost when it leaves
// the bus, or when another has taken its place.
void HelperSession::ownerChanged(const std::string& owner) {
    if (owner.empty() || owner == peer_)
        return;
    if (!peer_.empty())
        events_.interrupted("another helper took the place of the one before");
    setPeer(owner);
}

void HelperSession::setPeer(const std::string& peer) {
    peer_ = peer;
    peerWatch_ = std::make_unique<BusNameWatch>(*connection_, peer, queue_,
                                                handler(&HelperSession::peerChanged));
}

void HelperSession::peerChanged(const std::string& owner) {
    if (!owner.empty())
        return;
    peer_.clear();
    peerWatch_.reset();
    events_.interrupted(helperGone);
}

void HelperSession::lose(std::string reason) {
    end();
    events_.invalidated(std::move(reason));
}

void HelperSession::send(Call call) {
    connection_->call({.destination = route_.destination,
                       .path = route_.path,
                       .interface = route_.interface,
                       .name = std::move(call.method),
                       .mayStart = true,
                       .mayAskUser = route_.mayAskUser},
                      helperArguments(std::move(call.arguments)), call.deadline, queue_,
                      [number = call.number, task = handler(&HelperSession::replied)](
                          BusReply reply) { task(number, std::move(reply)); });
}

// What the end of the connection means, the next event says.
void HelperSession::replied(std::uint64_t number, BusReply reply) {
    if (reply.outcome != Outcome::closed)
        events_.replied(number, meaningOf(std::move(reply)));
}

} // namespace Platform
