#pragma once

#include <atomic>
#include <memory>

namespace CorbelKit {

/// Whether work that is under way is still wanted. Copies mean the same work; a default one cannot
/// be cancelled. (One of the two standard libraries that this code is built with has no
/// `std::stop_token`.) Callable on any thread.
class Cancellation {
public:
    Cancellation() = default;

    /// One that can be cancelled.
    static Cancellation make() {
        Cancellation cancellation;
        cancellation.isCancelled_ = std::make_shared<std::atomic<bool>>(false);
        return cancellation;
    }

    /// Asks for an end, which the work comes to when it looks. Nothing where it cannot be
    /// cancelled.
    void cancel() const {
        if (isCancelled_)
            isCancelled_->store(true);
    }

    /// For the work to ask, as often as it likes.
    bool isCancelled() const { return isCancelled_ && isCancelled_->load(); }

private:
    std::shared_ptr<std::atomic<bool>> isCancelled_;
};

} // namespace CorbelKit
