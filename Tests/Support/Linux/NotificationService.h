#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
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
/// what replaces something the same number. May be used on any one thread.
class NotificationService {
public:
    enum class Manner : std::uint8_t {
        answers,
        refuses, ///< every Notify with the error org.freedesktop.Notifications.Error.Refused
        holds,   ///< records, and answers when told to
    };

    static constexpr auto standardName = "org.freedesktop.Notifications";

    /// When it returns, it has the name, or stands in line for it behind another that has. A
    /// service of another name is a stranger that sends the same signals.
    explicit NotificationService(std::string busAddress,
                                 const std::vector<std::string>& capabilities = {"actions", "body"},
                                 std::string name = standardName);
    ~NotificationService();
    NotificationService(const NotificationService&) = delete;
    NotificationService& operator=(const NotificationService&) = delete;

    /// The next call of Notify that was not yet taken from here; absent when none comes in time.
    std::optional<NotifyCall> next(std::chrono::milliseconds deadline = std::chrono::seconds(20));

    void setManner(Manner manner);

    /// Answers what is held, in order.
    void answerHeld();

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
    std::mutex mutex_;
    std::condition_variable received_;
    Manner manner_ = Manner::answers;                      // mutex_
    std::deque<NotifyCall> calls_;                         // mutex_
    std::vector<std::function<void(std::uint32_t)>> held_; // mutex_: each answers with a number
    std::uint32_t lastNumber_ = 0;                         // mutex_
    std::unique_ptr<BusService> presence_;                 // one stay on the bus
};

} // namespace TestSupport
