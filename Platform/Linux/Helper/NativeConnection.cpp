#include "Platform/Native/NativeConnection.h"

#include "Platform/Linux/Helper/HelperSession.h"

#include <utility>

namespace Platform {
namespace {

// A year is as good as for ever, and clocks can count it.
BusDeadline deadlineOf(CallLimit limit) {
    return limit < std::chrono::hours(24 * 365) ? busDeadlineIn(limit) : BusDeadline::max();
}

} // namespace

class NativeConnection::Impl {
public:
    explicit Impl(Events events)
        : session_(std::make_shared<HelperSession>(queue_, std::move(events))) {}

    /// Has the task done with the session on its queue.
    template <class Task>
    void post(Task task) const {
        queue_.async([session = session_, task = std::move(task)] { task(*session); });
    }

private:
    const DispatchQueue queue_ = DispatchQueue::serial("com.tarnwell.HelperSession");
    const std::shared_ptr<HelperSession> session_;
};

NativeConnection::NativeConnection(const ConnectionAddress& address, Events events)
    : impl_(std::make_unique<Impl>(std::move(events))) {
    impl_->post([address](HelperSession& session) { session.start(address); });
}

NativeConnection::~NativeConnection() {
    impl_->post([](HelperSession& session) { session.end(); });
}

void NativeConnection::call(std::uint64_t number, std::string method, PropertyList::Array arguments,
                            CallLimit limit) {
    impl_->post([call = HelperSession::Call{.number = number,
                                            .method = std::move(method),
                                            .arguments = std::move(arguments),
                                            .deadline = deadlineOf(limit)}](
                    HelperSession& session) { session.call(call); });
}

} // namespace Platform
