// The kit's windows as a user has them: an application of its own on a desktop, with a mouse and a
// keyboard.

#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/DesktopPortal.h"
#include "Tests/Support/Linux/DesktopSession.h"
#include "Tests/Support/Linux/ScreenReader.h"
#include "Tests/Support/Testing.h"

#include <sys/stat.h>

#include <algorithm>
#include <fstream>

using namespace TestSupport;

namespace {

class Windows : public ::testing::Test {
protected:
    Windows() {
        fs::create_directories(program.parent_path());
        fs::create_directories(resources.parent_path());
        fs::copy_file(CORBEL_INTERFACE_TRIAL, program);
        fs::create_directory_symlink(CORBEL_KIT_RESOURCES, resources);
        writeFile(folder / "Trial.app/Contents/Info.plist", "{CFBundleName = \"Window Trial\";}");
        fs::create_directories(data / "applications");
        fs::create_directories(folder / ".config/gtk-4.0");
        mkfifo((folder / "commands").c_str(), S_IRUSR | S_IWUSR);
        environment = {"DISPLAY=" + session.display(),
                       "DBUS_SESSION_BUS_ADDRESS=" + bus.address(),
                       "HOME=" + folder.path().string(),
                       "XDG_DATA_HOME=" + data.string(),
                       "LANGUAGE=de",
                       "LC_ALL=de_DE.UTF-8",
                       "GSK_RENDERER=cairo",
                       "GDK_DEBUG=gl-disable",
                       "GTK_A11Y=none"};
    }

    void start() {
        commands.close();
        trial = std::make_unique<ChildProcess>(
            std::vector<std::string>{program.string(), (folder / "commands").string()},
            environment);
        commands.open(folder / "commands");
    }

    void order(const std::string& command) { commands << command << std::endl; }

    std::string ask(const std::string& command) {
        order(command);
        return trial->readLine();
    }

    std::string run(std::vector<std::string> command) const {
        return ChildProcess(std::move(command), environment).readAll();
    }

    /// The application's window that is to be seen; empty where there is none.
    std::string window() const {
        auto found = run({"xdotool", "search", "--onlyvisible", "--class", program.filename()});
        return found.substr(0, found.find('\n'));
    }

    // A key that is pressed before the window knows that it is in front is lost.
    bool opens() {
        return waitUntil([this] { return ask("front") == "yes"; });
    }

    bool closes() const {
        return waitUntil([this] { return window().empty(); });
    }

    bool show() { return ask("show") == "shown" && opens(); }

    void press(const std::string& key) { run({"xdotool", "key", key}); }

    /// An application that writes down what it is opened with, and whether the trial still has a
    /// window then.
    void install(const std::string& identifier, const std::string& lines) {
        const auto script = folder / identifier;
        writeFile(script, "#!/bin/sh\nwindow=$(xdotool search --onlyvisible --class " +
                              program.filename().string() +
                              ")\necho \"$1 ${window:-no window}\" >>\"$0.opened\"\n");
        fs::permissions(script, fs::perms::owner_all);
        writeFile(data / "applications" / (identifier + ".desktop"),
                  "[Desktop Entry]\nType=Application\nExec=" + script.string() + " %u\n" + lines);
    }

    void installBrowser() {
        install("browser", "Name=Browser\nMimeType=x-scheme-handler/https;\n");
        writeFile(folder / ".config/mimeapps.list",
                  "[Default Applications]\nx-scheme-handler/https=browser.desktop\n");
    }

    std::string opened(const std::string& identifier) const {
        const auto record = folder / (identifier + ".opened");
        const auto isWritten = [&] { return fs::exists(record) && !fs::is_empty(record); };
        return waitUntil(isWritten) ? contentOf(record) : "nothing";
    }

    DesktopSession session;
    BusDaemon bus{{{ScreenReader::busName, ScreenReader::service}}};
    TemporaryFolder folder;
    const fs::path program = folder / "Trial.app/Contents/Linux/window-trial";
    const fs::path resources =
        folder / "Trial.app/Contents/Frameworks/CorbelKit.framework/Resources";
    const fs::path data = folder / "data";
    std::vector<std::string> environment;
    std::unique_ptr<ChildProcess> trial;
    std::ofstream commands;
};

using AllowBackgroundItem = Windows;

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

TEST_F(Windows, ShowAnAlertFromAnyThreadUntilItIsDismissed) {
    start();
    for (const auto* const command : {"alert", "alertElsewhere"}) {
        for (const auto* const key : {"Return", "Escape"}) {
            SCOPED_TRACE(std::string(command) + ", " + key);
            order(command + std::string(" One"));
            ASSERT_TRUE(opens());
            press(key);
            EXPECT_EQ(trial->readLine(), "dismissed One");
            EXPECT_TRUE(closes());
        }
    }
}

TEST_F(Windows, AlertOfAHelperToolWhileTheApplicationGoesOn) {
    start();
    order("helper");
    ASSERT_TRUE(opens());
    EXPECT_EQ(run({"xdotool", "getwindowname", window()}),
              "Die Verbindung zum Hilfsprogramm konnte nicht hergestellt werden.\n");
    EXPECT_EQ(ask("windows"), "1 of 1");
    press("Return");
    EXPECT_EQ(trial->readLine(), "dismissed");
}

// What is asked for three times is dismissed once; another one, and a window that nobody could use
// below it, wait.
TEST_F(Windows, ComeAfterTheAlertsThatAreUpEachOnce) {
    start();
    for (const auto* const command :
         {"alertElsewhere One", "helper", "alertElsewhere One", "helper", "helper"})
        order(command);
    EXPECT_EQ(ask("show"), "shown");
    const auto title = [this] { return run({"xdotool", "getwindowname", window()}); };
    const std::string helper =
        "Die Verbindung zum Hilfsprogramm konnte nicht hergestellt werden.\n";
    std::vector<std::string> seen;
    for (int alert = 0; alert < 2; ++alert) {
        ASSERT_TRUE(opens());
        EXPECT_EQ(ask("windows").substr(0, 1), "1");
        seen.push_back(title());
        press("Return");
        for (int asked = 0; asked < (seen.back() == helper ? 3 : 2); ++asked)
            EXPECT_EQ(trial->readLine(), seen.back() == helper ? "dismissed" : "dismissed One");
        EXPECT_TRUE(waitUntil([&] { return title() != seen.back(); }));
    }
    EXPECT_THAT(seen, testing::UnorderedElementsAre("One\n", helper));
    ASSERT_TRUE(opens());
    EXPECT_EQ(title(), "Window Trial\n");
    press("Return");
    EXPECT_TRUE(closes());
}

// Those that wait for it go on, and the application takes its leave.
TEST_F(Windows, EndWithTheApplicationWithinASecond) {
    for (const int request : {SIGTERM, SIGINT}) {
        start();
        order("alertElsewhere One");
        ASSERT_TRUE(opens());
        order("alert Two");
        order("alertElsewhere Three");
        ASSERT_TRUE(waitUntil([this] { return ask("windows") == "2 of 2"; }));
        const auto asked = std::chrono::steady_clock::now();
        trial->send(request);
        std::string lines;
        for (const auto* const end = "dismissed too late\n"; !lines.ends_with(end);) {
            const auto line = trial->readLine();
            ASSERT_NE(line, "") << lines;
            lines += line + '\n';
        }
        EXPECT_LT(std::chrono::steady_clock::now() - asked, std::chrono::seconds(1));
        lines += trial->readAll(); // what a sanitizer has to do yet takes longer
        for (const auto* const message : {"One", "Two", "Three"})
            EXPECT_THAT(lines, testing::HasSubstr("dismissed " + std::string(message)));
    }
}

TEST_F(Windows, LeaveAlertsToTheTerminalWhereThereIsNoDisplay) {
    environment.front() = "DISPLAY=";
    start();
    EXPECT_EQ(ask("alert One"), "dismissed One");
    EXPECT_EQ(ask("alertElsewhere Two"), "dismissed Two");
    EXPECT_EQ(ask("show"), "shown");
}

} // namespace
