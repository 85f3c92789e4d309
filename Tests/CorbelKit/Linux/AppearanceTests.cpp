#include "CorbelKit/Services/Appearance.h"
#include "Platform/Application.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/DesktopPortal.h"
#include "Tests/Support/MainLoop.h"
#include "Tests/Support/WaitUntil.h"

#include <gtest/gtest.h>

TEST(Appearance, OfTheApplicationFollowsTheDesktop) {
    const TestSupport::BusDaemon bus;
    const TestSupport::EnvironmentVariable session("DBUS_SESSION_BUS_ADDRESS", bus.address());
    TestSupport::DesktopPortal portal(bus.address());
    portal.setColorScheme(1);
    const auto isDark = [] {
        return CorbelKit::isDark(Platform::Application::effectiveAppearance());
    };
    EXPECT_TRUE(isDark());
    for (const std::uint32_t scheme : {0U, 1U, 2U, 1U, 77U}) {
        portal.setColorScheme(scheme);
        EXPECT_TRUE(TestSupport::waitUntil([&] {
            TestSupport::drainMainLoop();
            return isDark() == (scheme == 1);
        })) << scheme;
    }
}
