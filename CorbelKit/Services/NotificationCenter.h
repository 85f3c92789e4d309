#pragma once

#include "Platform/ObserverList.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace CorbelKit {

/// Where parts of an application that do not know each other announce that something has happened,
/// by its name alone. Not what the user is notified of. Main thread.
class NotificationCenter {
public:
    /// Runs on the main thread, within `post`.
    using Handler = Platform::ObserverList::Handler;

    /// The one that all parts share. What is posted there, the system's own default centre posts as
    /// well, where it has one, for observers that are written against that (macOS); not the other
    /// way round.
    static NotificationCenter& defaultCenter();

    /// Has the handler called whenever the name is posted, until the observation ends. It may then
    /// post, add observers and end observations: see `ObserverList`.
    [[nodiscard]] Platform::Observation addObserver(std::string_view name, Handler handler);

    /// Calls those who observe the name, in the order in which they were added, and returns when
    /// all have been called.
    void post(std::string_view name) const;

private:
    std::map<std::string, Platform::ObserverList, std::less<>> observers_;
};

} // namespace CorbelKit
