#pragma once

#include "Tests/Support/Linux/RecordedCalls.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace TestSupport {

class BusService;

/// What the service was asked to show: the arguments of Notify.
struct NotifyCall {
    std::string applicationName;
    std::uint32_t replaces = 0;
    std::string icon;
    std::string summary;
    std::string body;
    std::vector<std::string> actions;         ///< keys and labels by turns
    std::map<std::string, std::string> hints; ///< each value as GVariant text: 'x', byte 0x01
    std::int32_t lifetime = 0;

    std::uint32_t number = 0; ///< that the answer gave it; 0: not answered
};

/// A notification service (freedesktop Desktop Notifications 1.2) that shows nothing and records
/// all, on a connection and a thread of its own. It numbers what it is given from 1 on, and gives
/// what replaces something the same number.
class NotificationService : public RecordedCalls<NotifyCall> {
public:
    static constexpr auto standardName = "org.freedesktop.Notifications";

    /// When it returns, it has the name, or stands in line for it behind another that has. A
    /// service of another name is a stranger that sends the same signals.
    explicit NotificationService(std::string busAddress,
                                 const std::vector<std::string>& capabilities = {"actions", "body"},
                                 std::string name = standardName);
    ~NotificationService();
    NotificationService(const NotificationService&) = delete;
    NotificationService& operator=(const NotificationService&) = delete;

    void emitActionInvoked(std::uint32_t number, const std::string& actionKey);
    void emitActivationToken(std::uint32_t number, const std::string& token);
    void emitNotificationClosed(std::uint32_t number, std::uint32_t reason);

    /// Leaves the bus, with what it holds unanswered.
    void vanish();

    /// Comes back as a new process of the service would: numbers start anew.
    void comeBack(const std::vector<std::string>& capabilities);

private:
    const std::string busAddress_;
    const std::string name_;
    std::uint32_t lastNumber_ = 0;         // mutex_
    std::unique_ptr<BusService> presence_; // one stay on the bus
};

} // namespace TestSupport
