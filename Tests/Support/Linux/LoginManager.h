#pragma once

#include "Tests/Support/Linux/RecordedCalls.h"

#include <memory>
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
/// connection and a thread of its own.
class LoginManager : public RecordedCalls<InhibitCall> {
public:
    explicit LoginManager(const std::string& busAddress);
    ~LoginManager();
    LoginManager(const LoginManager&) = delete;
    LoginManager& operator=(const LoginManager&) = delete;

    /// How many inhibitors were granted and are not closed.
    std::size_t inhibitorsOpen();

    void grantHeld() { answerHeld(); }

private:
    std::vector<int> granted_;            // mutex_: the ends to read from
    std::unique_ptr<BusService> service_; // last: it is serving from its start on
};

} // namespace TestSupport
