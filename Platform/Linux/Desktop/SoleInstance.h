#pragma once

#include "Platform/Linux/Bus/BusNames.h"

#include <functional>
#include <memory>
#include <string>

namespace Platform {

/// Sees to it that one process of a session runs an application: the one that has the application's
/// identifier as its name on the session bus. Main thread, on which the handlers are called while
/// the main loop runs; lives as long as that does.
class SoleInstance {
public:
    struct Handlers {
        std::function<void()> launch;                         ///< once
        std::function<void(const std::string& holder)> leave; ///< another runs: its process
        std::function<void()> sessionEnded;                   ///< the bus has closed
    };

    SoleInstance(std::string name, Handlers handlers);

    /// Has the name, or waits up to three seconds for one who has it to end. A bus that takes its
    /// time is not waited for before the launch: should it turn out later that there is another,
    /// this one leaves then.
    void claim();

private:
    void connect(std::shared_ptr<BusConnection> bus);
    void waitInLine();
    void findHolder();
    void launch();

    const std::string name_;
    const Handlers handlers_;
    std::shared_ptr<BusConnection> bus_; // null: none yet
    std::unique_ptr<BusNameClaim> nameClaim_;
    bool isInLine_ = false;
    bool hasLaunched_ = false;
};

} // namespace Platform
