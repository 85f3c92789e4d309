// What the desktop's services promise a process of which the desktop knows nothing.

#include "Platform/Application.h"
#include "Platform/Log.h"
#include "Platform/ProcessActivity.h"
#include "Platform/Workspace.h"
#include "Tests/Support/MainLoop.h"
#include "Tests/Support/Testing.h"

using namespace Platform;

TEST(Desktop, LooksLightAndReadsFromTheLeftUntilItIsKnown) {
    EXPECT_EQ(Application::effectiveAppearance(), Appearance(Appearance::Name::aqua));
    EXPECT_EQ(Application::userInterfaceLayoutDirection(), LayoutDirection::leftToRight);
}

TEST(Desktop, SaysOnceAndLaterWhichApplicationIsInFrontAndKnowsNoneOfSuchNames) {
    int calls = 0;
    Workspace::findMenuBarOwningApplication([&](const auto&) { ++calls; });
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(TestSupport::waitUntil([&] {
        TestSupport::drainMainLoop();
        return calls == 1;
    }));
    for (const auto* name : {"", "\xFF", "org.example.missing"})
        EXPECT_FALSE(Workspace::urlForApplication(name)) << name;
}

TEST(Desktop, TakesWordsOfAnyBytesAndEndsAnActivityOnce) {
    using Options = ProcessActivity::Options;
    auto activity = ProcessActivity::begin(Options::userInitiated, "a\xFF");
    activity = ProcessActivity::begin(Options::idleSystemSleepDisabled, "b");
    activity.end();
    activity.end();
    testing::internal::CaptureStderr();
    log("a\xFF\nb");
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::Not(testing::HasSubstr("null")));
}
