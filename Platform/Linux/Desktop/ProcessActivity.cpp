#include "Platform/ProcessActivity.h"

#include "Platform/Linux/Bundle/ProgramName.h"
#include "Platform/Linux/Bus/BusAddress.h"
#include "Platform/Linux/Bus/BusWriter.h"
#include "Platform/Linux/Bus/SharedBus.h"
#include "Platform/Linux/Loops/GStringPtr.h"
#include "Platform/Mutex.h"
#include "Platform/NeverDestroyed.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace Platform {
namespace {

using Options = ProcessActivity::Options;

constexpr auto patience = std::chrono::milliseconds(250);

bool contains(Options options, Options option) {
    const auto bits = static_cast<std::uint64_t>(option);
    return (static_cast<std::uint64_t>(options) & bits) == bits;
}

/// In the words of logind, joined by colons.
std::string inhibited(Options options) {
    std::string what;
    if (contains(options, Options::idleSystemSleepDisabled))
        what = "idle";
    if (contains(options, Options::suddenTerminationDisabled))
        what += what.empty() ? "shutdown" : ":shutdown";
    return what;
}

/// The login manager, as org.freedesktop.login1(5) describes it. Callable on any thread.
class LoginManager {
public:
    static LoginManager& shared() {
        static const NeverDestroyed<LoginManager> manager;
        return manager.get();
    }

    /// What is inhibited stays so until the file is closed. Absent when there is no bus or no
    /// manager, when it refuses, and when it does not answer in time; then it is not asked again
    /// for a minute, so that many calls do not pay for the same silence.
    std::optional<FileHandle> inhibit(const std::string& what, std::string_view why) {
        if (isResting())
            return std::nullopt;
        const auto deadline = busDeadlineIn(patience);
        auto file = ask(what, why, deadline);
        if (!file && BusClock::now() >= deadline)
            rest();
        return file;
    }

private:
    static std::optional<FileHandle> ask(const std::string& what, std::string_view why,
                                         BusDeadline deadline) {
        const auto bus = SharedBus::system().connectAndWait(deadline);
        if (!bus)
            return std::nullopt;
        const GStringPtr reason(g_utf8_make_valid(why.data(), static_cast<gssize>(why.size())));
        const auto reply = bus->callAndWait(
            {.destination = "org.freedesktop.login1",
             .path = "/org/freedesktop/login1",
             .interface = "org.freedesktop.login1.Manager",
             .name = "Inhibit",
             .replyType = "h"},
            busArguments(what, programName(), std::string(reason.get()), "block"), deadline);
        if (reply.outcome != BusReply::Outcome::answered)
            return std::nullopt;
        return std::move(*reply.file);
    }

    bool isResting() {
        const MutexLock lock(mutex_);
        return systemBusAddress() == silentBus_ && BusClock::now() < restsUntil_;
    }

    void rest() {
        const MutexLock lock(mutex_);
        silentBus_ = systemBusAddress();
        restsUntil_ = BusClock::now() + std::chrono::minutes(1);
    }

    Mutex mutex_;
    std::string silentBus_ CORBEL_GUARDED_BY(mutex_); // where nobody answered
    BusDeadline restsUntil_ CORBEL_GUARDED_BY(mutex_);
};

} // namespace

class ProcessActivity::Impl {
public:
    explicit Impl(FileHandle inhibitor)
        : inhibitor_(std::move(inhibitor)) {}

private:
    FileHandle inhibitor_;
};

ProcessActivity ProcessActivity::begin(Options options, std::string_view reason) {
    const auto what = inhibited(options);
    auto inhibitor = what.empty() ? std::nullopt : LoginManager::shared().inhibit(what, reason);
    return ProcessActivity(inhibitor ? std::make_unique<Impl>(std::move(*inhibitor)) : nullptr);
}

ProcessActivity::ProcessActivity(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

ProcessActivity::ProcessActivity(ProcessActivity&& other) noexcept = default;
ProcessActivity& ProcessActivity::operator=(ProcessActivity&& other) noexcept = default;
ProcessActivity::~ProcessActivity() = default;

void ProcessActivity::end() {
    impl_.reset();
}

} // namespace Platform
