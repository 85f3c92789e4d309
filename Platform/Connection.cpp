#include "Platform/Connection.h"

#include "Platform/Native/ConnectionState.h"

#include <utility>

namespace Platform {

Connection::Connection(std::shared_ptr<State> state)
    : state_(std::move(state)) {}

Connection::Connection()
    : Connection(std::make_shared<State>(ConnectionAddress())) {}

Connection::Connection(ServiceName service)
    : Connection(std::make_shared<State>(std::move(service))) {}

Connection::Connection(MachServiceName service)
    : Connection(std::make_shared<State>(std::move(service))) {}

Connection::Connection(ListenerEndpoint endpoint)
    : Connection(std::make_shared<State>(std::move(endpoint))) {}

Connection::~Connection() {
    state_->invalidate();
}

void Connection::resume() {
    state_->resume();
}

void Connection::suspend() {
    state_->suspend();
}

void Connection::invalidate() {
    state_->invalidate();
}

void Connection::setInterruptionHandler(Handler handler) {
    state_->setInterruptionHandler(std::move(handler));
}

void Connection::setInvalidationHandler(Handler handler) {
    state_->setInvalidationHandler(std::move(handler));
}

void Connection::call(std::string method, PropertyList::Array arguments, Completion completion,
                      CallLimit limit) {
    state_->call(std::move(method), std::move(arguments), std::move(completion), limit);
}

} // namespace Platform
