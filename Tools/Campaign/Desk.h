#pragma once

#include "Tests/Support/Linux/AgentTrial.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/NotificationService.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace Campaign {

/// An agent in a session of its own: a home, a bus and a notification service. For one thread.
class Desk {
public:
    Desk()
        : trial(CORBEL_AGENT) {
        renewSession();
    }

    /// A new bus with a new service; an agent on the old one ends.
    void renewSession() {
        service.reset();
        bus = std::make_unique<TestSupport::BusDaemon>();
        service = std::make_unique<TestSupport::NotificationService>(bus->address());
        trial.environment["DBUS_SESSION_BUS_ADDRESS"] = bus->address();
    }

    /// What was notified next, wherever: to the service, or to the terminal.
    std::optional<std::string> next(std::chrono::milliseconds deadline) {
        if (const auto line = trial.nextLine(std::chrono::milliseconds(0))) {
            const auto title = line->text.find(" \u2014 ");
            return title == std::string::npos ? line->text : line->text.substr(title + 5);
        }
        if (auto call = service->next(deadline))
            return call->body;
        return std::nullopt;
    }

    TestSupport::AgentTrial trial;
    std::unique_ptr<TestSupport::BusDaemon> bus;
    std::unique_ptr<TestSupport::NotificationService> service;
};

} // namespace Campaign
