// The window for background items, on a desktop.

#include "Tests/CorbelKitInterface/Linux/WindowTest.h"
#include "Tests/Support/Linux/DesktopPortal.h"

#include <algorithm>

namespace {

using AllowBackgroundItem = WindowTest;

// Whatever had the keyboard at the last showing; Help, that is opened at the end, only then.
TEST_F(AllowBackgroundItem, IsOneWindowThatClosesWhenItIsDoneWithOrTheUserTurnsElsewhere) {
    installBrowser();
    start();
    using namespace std::string_view_literals;
    for (const auto* const ending : {"okButton", "Return", "space", "Escape", "Tab", "elsewhere"}) {
        SCOPED_TRACE(ending);
        ASSERT_TRUE(show());
        EXPECT_EQ(ask("focus"), "okButton, drawn");
        EXPECT_EQ(ask("show"), "shown"); // a second time, in front already
        EXPECT_EQ(ask("windows"), "1 of 1");
        std::optional<ForeignWindow> other;
        if (ending == "elsewhere"sv) {
            other.emplace(session.display(), "other", "Other");
        } else if (ending == "Tab"sv) {
            press("Tab");
            EXPECT_TRUE(waitUntil([this] { return ask("focus") == "helpButton, drawn"; }));
            press("Escape");
        } else {
            ending == "okButton"sv ? order("click okButton") : press(ending);
        }
        EXPECT_TRUE(closes());
        EXPECT_EQ(ask("windows"), "0 of 1");
    }
    ASSERT_TRUE(show());
    order("click helpButton");
    EXPECT_EQ(opened("browser"),
              "https://tarnwell.example/help/window%20trial/allowbackgrounditem no window\n");
}

TEST_F(AllowBackgroundItem, IsClosedBeforeTheFirstSettingsThatAreInstalledOpen) {
    install("org.gnome.Settings", "Name=Settings\nName[de]=Einstellungen\n");
    install("kcm_autostart", "Name=Autostart\n");
    install("xfce-session-settings", "Name=Session\n");
    start();
    ASSERT_TRUE(show());
    order("click systemSettingsButton");
    EXPECT_EQ(opened("kcm_autostart"), " no window\n");
    EXPECT_TRUE(closes());
    EXPECT_FALSE(fs::exists(folder / "xfce-session-settings.opened"));
}

// As a screen reader has it, with the desktop's close button on the right and on the left.
TEST_F(AllowBackgroundItem, IsReadOutAsItLooks) {
    struct Case {
        std::string language;
        std::string settings; // those that the desktop has
        std::string layout;   // of the desktop's windows
        std::string closeSide;
        std::string expected;
    };

    install("kcm_autostart", "Name=Autostart\n");
    install("org.gnome.Settings", "Name=Settings\nName[de]=Einstellungen\nIcon=dialog-error\n");
    const Case cases[] = {
        {"en", "none", "close:", "left", R"(application "window-trial" (Window Trial)
window "Window Trial"
image "System Settings"
label "You will be asked to allow the background item to run."
label "Allow this option in the displayed notification or in System Settings. Then, attempt your action once more."
button "Help"
button "OK" focused
button "Close"
)"},
        {"de", "org.gnome.Settings", "menu:minimize,maximize,close", "right",
         R"(application "window-trial" (Window Trial)
window "Window Trial"
image "Einstellungen"
label "Du wirst gefragt, ob das Hintergrundobjekt ausgeführt werden darf."
label "Erlaube dies in der angezeigten Mitteilung oder in den Systemeinstellungen. Führe die Aktion danach noch einmal aus."
button "Hilfe"
button "Einstellungen"
button "OK" focused
button "Schließen"
)"},
        {"ar", "kcm_autostart", "menu:minimize", "nowhere",
         R"(application "window-trial" (Window Trial)
window "Window Trial"
image "إعدادات النظام"
label "سيُطلب منك السماح بتشغيل عنصر الخلفية."
label "اسمح بهذا الخيار في الإشعار المعروض أو في إعدادات النظام. ثم حاول إجراء العملية مرة أخرى."
button "مساعدة"
button "إعدادات النظام"
button "موافق" focused
)"},
    };
    std::erase(environment, "GTK_A11Y=none");
    const auto entries = data / "applications";
    fs::rename(entries, data / "known");
    for (const auto& [language, settings, layout, closeSide, expected] : cases) {
        SCOPED_TRACE(language);
        std::ranges::replace_if(
            environment, [](const auto& text) { return text.starts_with("LANGUAGE="); },
            "LANGUAGE=" + language);
        fs::remove_all(entries);
        fs::create_directory(entries);
        if (settings != "none")
            fs::copy(data / "known" / (settings + ".desktop"), entries);
        writeFile(folder / ".config/gtk-4.0/settings.ini",
                  "[Settings]\ngtk-decoration-layout=" + layout + "\n");
        start();
        ASSERT_TRUE(show());
        std::string read; // GTK gives it when it comes to it
        waitUntil([&] { return (read = ScreenReader::read(bus.address())) == expected; });
        EXPECT_EQ(read, expected);
        EXPECT_EQ(ask("close"), closeSide);
    }
}

TEST_F(AllowBackgroundItem, FollowsDarkAndLight) {
    DesktopPortal portal(bus.address());
    start();
    ASSERT_TRUE(show());
    EXPECT_EQ(run({"xdotool", "getwindowname", window()}), "Window Trial\n");
    EXPECT_EQ(ask("background"), "light");
    portal.setColorScheme(1);
    EXPECT_TRUE(waitUntil([this] { return ask("background") == "dark"; }));
    portal.setColorScheme(0);
    EXPECT_TRUE(waitUntil([this] { return ask("background") == "light"; }));
}

// Upwards, with a second between two times, without end.
TEST_F(AllowBackgroundItem, HasAPointerThatBounces) {
    start();
    ASSERT_TRUE(show());
    using Clock = std::chrono::steady_clock;
    for (int bounce = 0; bounce < 3; ++bounce) {
        auto lastSeenUp = Clock::now();
        Clock::duration rest{};
        EXPECT_TRUE(waitUntil([&] {
            const float rise = std::stof(ask("rise clickImageView"));
            EXPECT_GE(rise, 0);
            if (rise > 0)
                lastSeenUp = Clock::now();
            rest = std::max(rest, Clock::now() - lastSeenUp);
            return rise > 2 && (bounce == 0 || rest > std::chrono::milliseconds(800));
        }));
    }
}

TEST_F(AllowBackgroundItem, ShowsNothingOfALayoutThatIsMissingOrAnothers) {
    start();
    fs::remove(resources);
    fs::create_directory(resources);
    const auto layout = resources / "AllowBackgroundItem.ui";
    const std::string another = R"(<interface><object class="GtkWindow" id="Another"/>)";
    for (const auto& text : {another + "</interface>", std::string("<interface>"),
                             another + R"(<object class="Unknown"/></interface>)",
                             std::string("\xFF"), std::string()}) {
        SCOPED_TRACE(text);
        writeFile(layout, text);
        if (text.empty())
            fs::remove(layout);
        EXPECT_EQ(ask("show"), "shown");
        EXPECT_EQ(ask("windows"), "0 of 0");
    }
}

} // namespace
