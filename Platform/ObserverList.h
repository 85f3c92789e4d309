#pragma once

#include "Platform/Observation.h"

#include <functional>
#include <memory>
#include <vector>

namespace Platform {

/// Those who want to be told of one thing, in the order in which they were added. Main thread.
///
/// A handler may add observers and end their observations, its own as well, and may have the list
/// told again. Who is added while the others are told is not told that time; whose observation has
/// ended is not told any more. An observation may outlive the list.
class ObserverList {
public:
    /// Owned by the observation.
    using Handler = std::function<void()>;

    /// Has the handler called each time, until the observation ends.
    [[nodiscard]] Observation add(Handler handler);
    /// Calls the handlers, and returns when all have returned.
    void tell() const;

private:
    std::vector<std::weak_ptr<const Handler>> observers_;
};

} // namespace Platform
