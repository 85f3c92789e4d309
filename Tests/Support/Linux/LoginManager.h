#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace TestSupport {

class BusService;

/// The arguments of Inhibit.
struct InhibitCall {
    std::string what;
    std::string who;
    std::string why;
    std::string mode;
    friend bool operator==(const InhibitCall&, const InhibitCall&) = default;
};

/// A login manager (org.freedesktop.login1) that holds nothing up and records who asks it to, on a
/// connection and a thread of its own. May be used on any one thread.
class LoginManager {
public:
    enum class Manner : std::uint8_t {
        grants,
        refuses,
        holds, ///< records, and grants when told to
    };

    explicit LoginManager(const std::string& busAddress);
    ~LoginManager();
    LoginManager(const LoginManager&) = delete;
    LoginManager& operator=(const LoginManager&) = delete;

    /// The next call that was not yet taken from here; absent when none comes in time.
    std::optional<InhibitCall> next(std::chrono::milliseconds deadline = std::chrono::seconds(20));

    /// How many inhibitors were granted and are not closed.
    std::size_t inhibitorsOpen();

    void setManner(Manner manner);

    /// Grants what is held, in order.
    void grantHeld();

private:
    std::mutex mutex_;
    std::condition_variable received_;
    Manner manner_ = Manner::grants;          // mutex_
    std::deque<InhibitCall> calls_;           // mutex_
    std::vector<std::function<void()>> held_; // mutex_: each grants one
    std::vector<int> granted_;                // mutex_: the ends to read from
    std::unique_ptr<BusService> service_;     // last: it is serving from its start on
};

} // namespace TestSupport
