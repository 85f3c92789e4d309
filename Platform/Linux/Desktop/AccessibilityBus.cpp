#include "Platform/Linux/Desktop/AccessibilityBus.h"

#include "Platform/Linux/Bus/BusAddress.h"
#include "Platform/Linux/Bus/BusNames.h"
#include "Platform/Linux/Bus/BusWriter.h"
#include "Platform/Linux/Bus/SharedBus.h"

#include <functional>
#include <future>
#include <memory>
#include <string>
#include <utility>

namespace Platform::AccessibilityBus {
namespace {

using Outcome = BusReply::Outcome;

constexpr auto accessibleInterface = "org.a11y.atspi.Accessible";
constexpr auto rootPath = "/org/a11y/atspi/accessible/root";

/// An object of an application on the bus.
struct Accessible {
    std::string busName;
    std::string path;
};

// No bus and no application is started to be asked what it shows.
BusMethod methodOf(const Accessible& object, std::string name, std::string replyType) {
    return {.destination = object.busName,
            .path = object.path,
            .interface = accessibleInterface,
            .name = std::move(name),
            .replyType = std::move(replyType)};
}

std::string findAddress(BusDeadline deadline) {
    const auto session = SharedBus::session().connectAndWait(deadline);
    if (!session)
        return {};
    const auto reply = session->callAndWait({.destination = "org.a11y.Bus",
                                             .path = "/org/a11y/bus",
                                             .interface = "org.a11y.Bus",
                                             .name = "GetAddress",
                                             .replyType = "s"},
                                            {}, deadline);
    return reply.outcome == Outcome::answered ? *reply.values[0].get<std::string>() : "";
}

std::shared_ptr<BusConnection> connect(BusDeadline deadline) {
    const auto promise = std::make_shared<std::promise<std::shared_ptr<BusConnection>>>();
    auto connection = promise->get_future();
    BusConnection::connect(
        findAddress(deadline), BusConnection::Peer::bus, deadline,
        [promise](auto made) { promise->set_value(made ? std::move(*made) : nullptr); });
    return connection.get();
}

/// Asks all applications at once, so that one that hangs does not keep the others from answering.
/// Goes on from answer to answer on the buses' thread, and keeps itself until the last has come.
class FrameSearch : public std::enable_shared_from_this<FrameSearch> {
public:
    FrameSearch(std::shared_ptr<BusConnection> connection, BusDeadline deadline)
        : connection_(std::move(connection))
        , deadline_(deadline) {}

    /// The application's root object. Waits: every question ends, by the deadline at the latest.
    std::optional<Accessible> run() {
        askForChildren({.busName = "org.a11y.atspi.Registry", .path = rootPath},
                       [this](const Accessible& application) { askForFrames(application); });
        return found_.get_future().get();
    }

private:
    using Receiver = std::function<void(const PropertyList::Array& values)>;

    // Far more than any desktop shows; a bus that claims more is not worth its time.
    static constexpr int mostCalls = 1000;
    static constexpr std::uint64_t activeState = 1U << 1U; // ATSPI_STATE_ACTIVE

    void askForFrames(const Accessible& application) {
        askForChildren(application, [this, application](const Accessible& frame) {
            ask(methodOf(frame, "GetState", "au"),
                [this, application](const PropertyList::Array& values) {
                    const auto& states = *values[0].get<PropertyList::Array>();
                    const auto* const first =
                        states.empty() ? nullptr : states[0].get<std::int64_t>();
                    if (first != nullptr && (static_cast<std::uint64_t>(*first) & activeState) != 0)
                        finish(application);
                });
        });
    }

    void askForChildren(const Accessible& object,
                        std::function<void(const Accessible& child)> receiver) {
        ask(methodOf(object, "GetChildren", "a(so)"),
            [receiver = std::move(receiver)](const PropertyList::Array& values) {
                for (const auto& child : *values[0].get<PropertyList::Array>()) {
                    const auto& place = *child.get<PropertyList::Array>();
                    receiver({.busName = *place[0].get<std::string>(),
                              .path = *place[1].get<std::string>()});
                }
            });
    }

    void ask(BusMethod method, Receiver receiver) {
        if (isFinished_ || ++calls_ > mostCalls)
            return;
        ++pending_;
        connection_->call(
            std::move(method), {}, deadline_,
            [self = shared_from_this(), receiver = std::move(receiver)](const BusReply& reply) {
                if (reply.outcome == Outcome::answered && !self->isFinished_)
                    receiver(reply.values);
                if (--self->pending_ == 0)
                    self->finish(std::nullopt);
            });
    }

    void finish(std::optional<Accessible> application) {
        if (!std::exchange(isFinished_, true))
            found_.set_value(std::move(application));
    }

    const std::shared_ptr<BusConnection> connection_;
    const BusDeadline deadline_;
    std::promise<std::optional<Accessible>> found_;
    bool isFinished_ = false;
    int pending_ = 0;
    int calls_ = 0;
};

std::string nameOf(BusConnection& connection, const Accessible& application, BusDeadline deadline) {
    const auto reply = connection.callAndWait({.destination = application.busName,
                                               .path = application.path,
                                               .interface = "org.freedesktop.DBus.Properties",
                                               .name = "Get",
                                               .replyType = "v"},
                                              busArguments(accessibleInterface, "Name"), deadline);
    const auto* const name =
        reply.outcome == Outcome::answered ? reply.values[0].get<std::string>() : nullptr;
    return name != nullptr ? *name : "";
}

pid_t processOf(BusConnection& connection, const Accessible& application, BusDeadline deadline) {
    const auto reply = connection.callAndWait(busDriverMethod("GetConnectionUnixProcessID", "u"),
                                              busArguments(application.busName), deadline);
    return reply.outcome == Outcome::answered
               ? static_cast<pid_t>(*reply.values[0].get<std::int64_t>())
               : 0;
}

} // namespace

std::optional<FrontWindow> activeFrame(std::chrono::milliseconds patience) {
    const auto deadline = busDeadlineIn(patience);
    const auto connection = connect(deadline);
    if (!connection)
        return std::nullopt;
    const auto application = std::make_shared<FrameSearch>(connection, deadline)->run();
    if (!application)
        return std::nullopt;
    return FrontWindow{.instanceName = {},
                       .className = nameOf(*connection, *application, deadline),
                       .process = processOf(*connection, *application, deadline)};
}

} // namespace Platform::AccessibilityBus
