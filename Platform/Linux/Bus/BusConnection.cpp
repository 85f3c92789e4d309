#include "Platform/Linux/Bus/BusConnection.h"

#include "Platform/Linux/Bus/BusLink.h"

#include <future>
#include <utility>

namespace Platform {

BusSubscription::BusSubscription(std::shared_ptr<BusLink> link, std::uint64_t number,
                                 std::shared_ptr<const bool> token)
    : link_(std::move(link))
    , number_(number)
    , token_(std::move(token)) {}

BusSubscription::~BusSubscription() {
    link_->post([number = number_](BusLink& link) { link.unsubscribe(number); });
}

void BusConnection::connect(const std::string& address, Peer peer, BusDeadline deadline,
                            Connected handler) {
    const auto made = std::make_shared<BusLink>(peer == Peer::bus);
    made->post([address, deadline, handler = std::move(handler)](BusLink& link) {
        link.open(address, deadline, [&link, handler](std::optional<Error> error) {
            if (error) {
                handler(std::move(*error));
            } else {
                handler(std::make_shared<BusConnection>(link.shared_from_this()));
            }
        });
    });
}

BusConnection::BusConnection(std::shared_ptr<BusLink> link)
    : link_(std::move(link)) {}

BusConnection::~BusConnection() {
    link_->post([](BusLink& link) { link.close(); });
}

void BusConnection::call(BusMethod method, BusArguments arguments, BusDeadline deadline,
                         Replied handler) {
    link_->post(
        [call = std::make_shared<BusLink::Call>(BusLink::Call{.method = std::move(method),
                                                              .arguments = std::move(arguments),
                                                              .deadline = deadline,
                                                              .handler = std::move(handler)})](
            BusLink& link) { link.call(std::move(*call)); });
}

void BusConnection::call(BusMethod method, BusArguments arguments, BusDeadline deadline,
                         const DispatchQueue& queue, Replied completion) {
    call(std::move(method), std::move(arguments), deadline,
         [queue, completion = std::move(completion)](BusReply reply) {
             queue.async([completion, reply = std::move(reply)]() mutable {
                 completion(std::move(reply));
             });
         });
}

BusReply BusConnection::callAndWait(BusMethod method, BusArguments arguments,
                                    BusDeadline deadline) {
    const auto promise = std::make_shared<std::promise<BusReply>>();
    auto reply = promise->get_future();
    call(std::move(method), std::move(arguments), deadline,
         [promise](BusReply value) { promise->set_value(std::move(value)); });
    return reply.get();
}

std::unique_ptr<BusSubscription> BusConnection::subscribe(BusSignalRule rule,
                                                          const DispatchQueue& queue,
                                                          std::function<void(BusSignal)> task) {
    const auto token = std::make_shared<const bool>();
    const auto number = BusLink::newNumber();
    auto handler = [queue, task = std::move(task), weak = std::weak_ptr(token)](BusSignal signal) {
        queue.async([task, weak, signal = std::move(signal)]() mutable {
            if (const auto living = weak.lock())
                task(std::move(signal));
        });
    };
    link_->post([number, rule = std::move(rule), handler = std::move(handler)](BusLink& link) {
        link.subscribe(number, rule, handler);
    });
    return std::make_unique<BusSubscription>(link_, number, token);
}

void BusConnection::serve(BusService service, std::function<void(BusCall call)> handler) {
    link_->post([service = std::move(service), handler = std::move(handler)](BusLink& link) {
        link.serve(service, handler);
    });
}

void BusConnection::answer(std::uint64_t number, BusAnswer answer) {
    link_->post(
        [number, answer = std::move(answer)](BusLink& link) { link.answer(number, answer); });
}

void BusConnection::whenClosed(const DispatchQueue& queue,
                               std::function<void(std::string reason)> task) {
    link_->post([queue, task = std::move(task)](BusLink& link) {
        link.whenClosed([queue, task](const std::string& reason) {
            queue.async([task, reason] { task(reason); });
        });
    });
}

bool BusConnection::isClosed() const {
    return link_->isClosed();
}

} // namespace Platform
