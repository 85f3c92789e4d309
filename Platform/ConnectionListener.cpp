#include "Platform/ConnectionListener.h"

#include "Platform/Native/ListenerState.h"

#include <utility>

namespace Platform {

ConnectionListener::ConnectionListener(MachServiceName service, CallHandler handler)
    : state_(std::make_shared<State>(std::move(service), std::move(handler))) {}

ConnectionListener::~ConnectionListener() {
    state_->invalidate();
}

void ConnectionListener::setInvalidationHandler(InvalidationHandler handler) {
    state_->setInvalidationHandler(std::move(handler));
}

void ConnectionListener::resume() {
    state_->resume();
}

void ConnectionListener::invalidate() {
    state_->invalidate();
}

} // namespace Platform
