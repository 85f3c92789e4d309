// What the user sees and chooses on macOS, where a stand-in shows and chooses it.

#include "Platform/Alert.h"
#include "Platform/AppService.h"
#include "Platform/Application.h"
#include "Platform/SystemObservers.h"
#include "Platform/Workspace.h"

#import <AppKit/AppKit.h>
#include <gmock/gmock.h>

@interface NSApplication (CorbelTrial)
- (void)useAppearance:(NSAppearanceName)name;
@end

namespace {

using namespace Platform;
using Name = Appearance::Name;

} // namespace

TEST(Desktop, ReportsEachChangeOfTheAppearanceOnce) {
    static_cast<void>([NSApplication sharedApplication]);
    std::vector<std::optional<Name>> seen;
    {
        const auto observation = Application::observeEffectiveAppearance([&seen] {
            seen.push_back(
                Application::effectiveAppearance().bestMatch({Name::aqua, Name::darkAqua}));
        });
        for (NSAppearanceName name :
             {NSAppearanceNameDarkAqua, NSAppearanceNameDarkAqua, NSAppearanceNameAqua})
            [NSApp useAppearance:name];
    }
    [NSApp useAppearance:NSAppearanceNameDarkAqua];
    EXPECT_THAT(seen, testing::ElementsAre(Name::darkAqua, Name::aqua));
}

TEST(Desktop, OpensURLsUnchangedAndTheSettings) {
    testing::internal::CaptureStdout();
    Workspace::open(*URL::parse("x-a://b/%2F+?c#d"));
    AppService::openSystemSettingsLoginItems();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Opened: x-a://b/%2F+?c#d\nOpened: login items\n");
    EXPECT_EQ(Workspace::urlForApplication("com.tarnwell.VesperPro10"),
              URL::file("/Applications/Vesper Pro.app", URL::DirectoryHint::isDirectory));
}

TEST(Desktop, ShowsAlertsWithTheirTextsAndTheSystemsButtonWhereTheyHaveNone) {
    testing::internal::CaptureStdout();
    runModal({.messageText = "Not saved",
              .informativeText = "The disk is full.",
              .buttonTitle = "Close",
              .style = Alert::Style::critical});
    runModal({.messageText = "Saved", .informativeText = "\xFF", .buttonTitle = {}});
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Alert 2: Not saved | The disk is full. | Close\nAlert 0: Saved | \uFFFD | OK\n");
}

TEST(Desktop, CallsTheSystemsObserversBeforeItReturns) {
    __block int calls = 0;
    NSNotificationCenter* const center = NSNotificationCenter.defaultCenter;
    id const observer = [center addObserverForName:@"a"
                                            object:nil
                                             queue:nil
                                        usingBlock:^(NSNotification* notification) {
                                            calls += notification.object == nil ? 1 : 0;
                                        }];
    for (const auto* name : {"a", "b", "\xFF"})
        postToSystemObservers(name);
    [center removeObserver:observer];
    postToSystemObservers("a");
    EXPECT_EQ(calls, 1);
}
