// What a helper or a notification service that means ill costs: 64 MiB that are two orders of
// magnitude more as values, or none at all.

#include "Platform/Linux/Notifications/DesktopNotifications.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/StandardOutput.h"
#include "Tests/Platform/Linux/ConnectedBus.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/PeakMemory.h"
#include "Tests/Support/Testing.h"

#include <malloc.h>

#include <algorithm>
#include <future>

#if defined(__SANITIZE_ADDRESS__)
// The sanitizer's moves a block also where its size stays, as the C library's does not; libsystemd
// calls it with each piece of a message that it reads.
extern "C" void* __interceptor_realloc(void* block, std::size_t size);

extern "C" [[gnu::visibility("default")]] void* realloc(void* block, std::size_t size) noexcept {
    const bool fits = block != nullptr && size > 0 && malloc_usable_size(block) == size;
    return fits ? block : __interceptor_realloc(block, size);
}
#endif

namespace {

using namespace Platform;
using Outcome = BusReply::Outcome;
using TestSupport::ChildProcess;

constexpr auto program = CORBEL_TEST_DATA "/HostilePeer.py";

std::unique_ptr<ChildProcess> start(std::vector<std::string> command) {
    auto process = std::make_unique<ChildProcess>(std::move(command));
    EXPECT_EQ(process->readLine(), "ready");
    return process;
}

class HostilePeer : public testing::Test {
protected:
    // While the answer is under way, the other connection is answered each time in half a second;
    // and what it costs is bounded. (A sanitizer keeps what was freed, which counts only once.)
    template <class Answer>
    Answer meanwhile(const std::string& what, std::future<Answer> answer) {
        constexpr auto patience = std::chrono::milliseconds(500);
        constexpr long most = 3L * 64 << 20;
        const auto before = TestSupport::peakMemory();
        testing::internal::CaptureStderr();
        while (answer.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
            const auto echo = other->callAndWait(method("echo"), {}, busDeadlineIn(patience));
            EXPECT_EQ(echo.outcome, Outcome::answered) << what << ": " << echo.description;
        }
        const auto log = testing::internal::GetCapturedStderr();
        EXPECT_LE(std::ranges::count(log, '\n'), 1) << what << ": " << log.substr(0, 1000);
        EXPECT_LT(TestSupport::peakMemory() - before, most) << what;
        return answer.get();
    }

    static BusMethod method(const std::string& name) {
        return {.destination = "", .path = "/", .interface = "com.example.Any", .name = name};
    }

    TestSupport::TemporaryFolder folder;
    std::string peer = "unix:path=" + (folder / "peer").string();
    std::unique_ptr<ChildProcess> helper =
        start({CORBEL_BINARY_DIR "/Tests/Support/HelperTool", "peer", peer});
    std::shared_ptr<BusConnection> other = connectedBus(peer, BusConnection::Peer::process);
};

} // namespace

TEST_F(HostilePeer, AsAHelperCostsItsOwnSizeAndHoldsNobodyUp) {
    const auto socket = folder / "hostile";
    const auto hostile = start({"python3", program, "serve", socket.string()});
    const std::pair<const char*, Outcome> cases[] = {
        {"variants", Outcome::unreadable},
        {"arrays", Outcome::unreadable},
        {"malformed", Outcome::unreadable},
        {"garbage", Outcome::closed},
    };
    for (const auto& [name, expected] : cases) {
        const auto connection =
            connectedBus("unix:path=" + socket.string(), BusConnection::Peer::process);
        const auto answer = std::make_shared<std::promise<Outcome>>();
        connection->call(method(name), {}, BusDeadline::max(),
                         [answer](const auto& reply) { answer->set_value(reply.outcome); });
        EXPECT_EQ(meanwhile(name, answer->get_future()), expected) << name;
    }
}

TEST_F(HostilePeer, AsANotificationServiceCostsItsOwnSizeAndHoldsNobodyUp) {
    const TestSupport::BusDaemon bus;
    const TestSupport::EnvironmentVariable session("DBUS_SESSION_BUS_ADDRESS", bus.address());
    const auto queue = DispatchQueue::serial("notifications");
    static const NeverDestroyed<DesktopNotifications> notifications(
        queue, [](const auto& /*response*/) {});
    const std::tuple<const char*, std::string, bool> cases[] = {
        {"GetCapabilities", "variants", true}, {"GetCapabilities", "arrays", true},
        {"GetCapabilities", "strings", true},  {"GetCapabilities", "malformed", true},
        {"Notify", "variants", false},         {"Notify", "malformed", true},
    };
    for (const auto& [hostileMethod, kind, goesToTheTerminal] : cases) {
        const auto service = start({"python3", program, "join", bus.socket().string(),
                                    "org.freedesktop.Notifications", kind, hostileMethod});
        const auto answer = std::make_shared<std::promise<bool>>();
        queue.async([kind, answer] {
            notifications.get().deliver(
                {.identifier = kind, .content = {.title = kind}, .trigger = {}}, {},
                [answer](const auto& error) { answer->set_value(!error); });
        });
        testing::internal::CaptureStdout();
        EXPECT_EQ(meanwhile(kind, answer->get_future()), goesToTheTerminal) << hostileMethod;
        EXPECT_TRUE(StandardOutput::drain(std::chrono::seconds(10)));
        EXPECT_EQ(testing::internal::GetCapturedStdout(), goesToTheTerminal ? kind + "\n" : "");
    }
}
