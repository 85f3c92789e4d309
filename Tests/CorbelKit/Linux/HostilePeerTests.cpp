// What a helper or a notification service that means ill costs: 64 MiB that are two orders of
// magnitude more as values, or none at all.

#include "CorbelKit/Services/XPCConnection.h"
#include "Platform/Linux/Notifications/DesktopNotifications.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/StandardOutput.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/PeakMemory.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <future>
#include <optional>

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

using CorbelKit::NoReply;
using CorbelKit::XPCConnection;
using Platform::ConnectionError;
using TestSupport::ChildProcess;
using Kind = ConnectionError::Kind;

constexpr auto program = CORBEL_TEST_DATA "/HostilePeer.py";

std::unique_ptr<ChildProcess> start(std::vector<std::string> command) {
    auto process = std::make_unique<ChildProcess>(std::move(command));
    EXPECT_EQ(process->readLine(), "ready");
    return process;
}

class HostilePeer : public testing::Test {
protected:
    HostilePeer() { other.resume(); }

    // While the answer is under way, the other connection is answered each time in half a second;
    // and what it costs is bounded. (A sanitizer keeps what was freed, which counts only once.)
    template <class Answer>
    Answer meanwhile(const std::string& what, std::future<Answer> answer) {
        constexpr auto patience = std::chrono::milliseconds(500);
        constexpr long most = 3L * 64 << 20;
        const auto before = TestSupport::peakMemory();
        testing::internal::CaptureStderr();
        while (answer.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
            const auto echo = std::make_shared<std::promise<bool>>();
            other.call<int>("echo", [echo](const auto& reply) { echo->set_value(!!reply); }, 7);
            auto echoed = echo->get_future();
            EXPECT_EQ(echoed.wait_for(patience), std::future_status::ready) << what;
            EXPECT_TRUE(echoed.get());
        }
        const auto log = testing::internal::GetCapturedStderr();
        EXPECT_LE(std::ranges::count(log, '\n'), 1) << what << ": " << log.substr(0, 1000);
        EXPECT_LT(TestSupport::peakMemory() - before, most) << what;
        return answer.get();
    }

    TestSupport::TemporaryFolder folder;
    std::string peer = "unix:path=" + (folder / "peer").string();
    std::unique_ptr<ChildProcess> helper =
        start({CORBEL_BINARY_DIR "/Tests/Support/HelperTool", "peer", peer});
    XPCConnection other{Platform::ListenerEndpoint(peer)};
};

} // namespace

TEST_F(HostilePeer, AsAHelperCostsItsOwnSizeAndHoldsNobodyUp) {
    const auto socket = folder / "hostile";
    const auto hostile = start({"python3", program, "serve", socket.string()});
    XPCConnection connection{Platform::ListenerEndpoint("unix:path=" + socket.string())};
    connection.resume();
    const std::pair<const char*, Kind> cases[] = {
        {"variants", Kind::badReply},   {"arrays", Kind::badReply}, {"malformed", Kind::badReply},
        {"garbage", Kind::interrupted}, // and costs the connection, which the next call makes anew
        {"malformed", Kind::badReply},
    };
    for (const auto& [method, expected] : cases) {
        const auto answer = std::make_shared<std::promise<std::optional<Kind>>>();
        connection.call<NoReply>(method, [answer](const auto& reply) {
            answer->set_value(reply ? std::nullopt : std::optional(reply.error().kind));
        });
        EXPECT_EQ(meanwhile(method, answer->get_future()), expected) << method;
    }
}

TEST_F(HostilePeer, AsANotificationServiceCostsItsOwnSizeAndHoldsNobodyUp) {
    const TestSupport::BusDaemon bus;
    const TestSupport::EnvironmentVariable session("DBUS_SESSION_BUS_ADDRESS", bus.address());
    const auto queue = Platform::DispatchQueue::serial("notifications");
    static const Platform::NeverDestroyed<Platform::DesktopNotifications> notifications(
        queue, [](const auto& /*response*/) {});
    for (const std::string kind : {"variants", "arrays", "strings", "malformed"}) {
        const auto service = start({"python3", program, "join", bus.socket().string(),
                                    "org.freedesktop.Notifications", kind});
        const auto answer = std::make_shared<std::promise<bool>>();
        queue.async([kind, answer] {
            notifications.get().deliver(
                {.identifier = kind, .content = {.title = kind}, .trigger = {}}, {},
                [answer](const auto& error) { answer->set_value(!error); });
        });
        testing::internal::CaptureStdout();
        EXPECT_TRUE(meanwhile(kind, answer->get_future()));
        EXPECT_TRUE(Platform::StandardOutput::drain(std::chrono::seconds(10)));
        EXPECT_EQ(testing::internal::GetCapturedStdout(), kind + "\n"); // it went to the terminal
    }
}
