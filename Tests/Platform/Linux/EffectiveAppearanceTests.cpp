#include "Platform/Application.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/DesktopPortal.h"
#include "Tests/Support/MainLoop.h"
#include "Tests/Support/Testing.h"

namespace Application = Platform::Application;
using Name = Platform::Appearance::Name;

namespace {

bool mainLoopBrings(const std::function<bool()>& condition) {
    return TestSupport::waitUntil([&condition] {
        TestSupport::drainMainLoop();
        return condition();
    });
}

} // namespace

// In one test: a process listens to one desktop.
TEST(EffectiveAppearance, NotifiesOfEachChangeOnce) {
    const TestSupport::BusDaemon bus;
    const TestSupport::EnvironmentVariable session("DBUS_SESSION_BUS_ADDRESS", bus.address());
    TestSupport::DesktopPortal portal(bus.address());
    std::vector<std::optional<Name>> seen;
    const auto observation = Application::observeEffectiveAppearance([&seen] {
        seen.push_back(Application::effectiveAppearance().bestMatch({Name::aqua, Name::darkAqua}));
    });

    // Dark and light; then no other way to say light is news, and the next dark is.
    for (const std::uint32_t scheme : {1U, 1U, 2U, 77U, 0U, 1U})
        portal.setColorScheme(scheme);
    EXPECT_TRUE(mainLoopBrings([&seen] { return seen.size() >= 3; }));
    const std::vector<std::optional<Name>> expected{Name::darkAqua, Name::aqua, Name::darkAqua};
    EXPECT_EQ(seen, expected);
}
