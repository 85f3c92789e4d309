#pragma once

#include "Platform/Observation.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace Platform {

/// The observers of one thing, in the order in which they were added. Main thread.
///
/// A handler may add observers and end their observations, its own as well, and may have the list
/// notified again. An observer that is added while the others are notified waits for the next time;
/// one whose observation has ended is not called any more. An observation may outlive the list.
class ObserverList {
public:
    /// Owned by the observation.
    using Handler = std::function<void()>;

    /// Has the handler called each time, until the observation ends.
    [[nodiscard]] Observation add(Handler handler);
    /// Calls the handlers, and returns when all have returned.
    void notify() const;

private:
    std::vector<std::weak_ptr<const Handler>> observers_; // some of them ended
    std::size_t living_ = 0; // when those that had ended were last removed
};

} // namespace Platform
