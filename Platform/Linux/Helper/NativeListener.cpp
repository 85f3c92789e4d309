#include "Platform/Native/NativeListener.h"

#include "Platform/Linux/Helper/ListenerSession.h"

#include <utility>

namespace Platform {

class NativeListener::Impl {
public:
    explicit Impl(Events events)
        : session_(std::make_shared<ListenerSession>(queue_, std::move(events))) {}

    /// Has the task done with the session on its queue.
    template <class Task>
    void post(Task task) const {
        queue_.async([session = session_, task = std::move(task)] { task(*session); });
    }

private:
    const DispatchQueue queue_ = DispatchQueue::serial("com.tarnwell.ListenerSession");
    const std::shared_ptr<ListenerSession> session_;
};

NativeListener::NativeListener(const MachServiceName& service, Events events)
    : impl_(std::make_unique<Impl>(std::move(events))) {
    impl_->post([service](ListenerSession& session) { session.start(service); });
}

NativeListener::~NativeListener() {
    impl_->post([](ListenerSession& session) { session.end(); });
}

void NativeListener::answer(std::uint64_t number, CallAnswer answer) {
    impl_->post([number, answer = std::move(answer)](ListenerSession& session) {
        session.answer(number, answer);
    });
}

} // namespace Platform
