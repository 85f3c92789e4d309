// The kit's windows as a user has them: an application of its own on a desktop, with a mouse and a
// keyboard.

#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/DesktopPortal.h"
#include "Tests/Support/Linux/DesktopSession.h"
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
        fs::create_directories(folder / ".config");
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
                              ")\necho \"$1 ${window:-no window}\" >\"$0.new\"\n"
                              "mv \"$0.new\" \"$0.opened\"\n");
        fs::permissions(script, fs::perms::owner_all);
        writeFile(data / "applications" / (identifier + ".desktop"),
                  "[Desktop Entry]\nType=Application\nExec=" + script.string() + " %u\n" + lines);
    }

    std::string opened(const std::string& identifier) const {
        const auto record = folder / (identifier + ".opened");
        return waitUntil([&] { return fs::exists(record); }) ? contentOf(record) : "nothing";
    }

    DesktopSession session;
    BusDaemon bus;
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

TEST_F(AllowBackgroundItem, IsOneWindowThatClosesWhenItIsDoneWithOrTheUserTurnsElsewhere) {
    start();
    using namespace std::string_view_literals;
    for (const auto* const ending : {"okButton", "Return", "Escape", "elsewhere"}) {
        SCOPED_TRACE(ending);
        ASSERT_TRUE(show());
        EXPECT_EQ(ask("show"), "shown"); // a second time, in front already
        EXPECT_EQ(ask("windows"), "1 of 1");
        std::optional<ForeignWindow> other;
        if (ending == "elsewhere"sv) {
            other.emplace(session.display(), "other", "Other");
        } else {
            ending == "okButton"sv ? order("click okButton") : press(ending);
        }
        EXPECT_TRUE(closes());
        EXPECT_EQ(ask("windows"), "0 of 1");
    }
}

TEST_F(AllowBackgroundItem, IsClosedBeforeTheFirstSettingsThatAreInstalledOpen) {
    install("org.gnome.Settings", "Name=Settings\nName[de]=Einstellungen\n");
    install("kcm_autostart", "Name=Autostart\n");
    install("xfce-session-settings", "Name=Session\n");
    start();
    ASSERT_TRUE(show());
    EXPECT_EQ(ask("text systemSettingsButton"), "Einstellungen");
    order("click systemSettingsButton");
    EXPECT_EQ(opened("kcm_autostart"), " no window\n");
    EXPECT_TRUE(closes());
    EXPECT_FALSE(fs::exists(folder / "xfce-session-settings.opened"));
}

TEST_F(AllowBackgroundItem, OpensItsPageOfTheOnlineHelpInPlaceOfItself) {
    install("browser", "Name=Browser\nMimeType=x-scheme-handler/https;\n");
    writeFile(folder / ".config/mimeapps.list",
              "[Default Applications]\nx-scheme-handler/https=browser.desktop\n");
    start();
    ASSERT_TRUE(show());
    order("click helpButton");
    EXPECT_EQ(opened("browser"),
              "https://tarnwell.example/help/window%20trial/allowbackgrounditem no window\n");
    EXPECT_TRUE(closes());
}

TEST_F(AllowBackgroundItem, SpeaksTheUsersLanguageAndFollowsDarkAndLight) {
    DesktopPortal portal(bus.address());
    start();
    ASSERT_TRUE(show());
    EXPECT_EQ(run({"xdotool", "getwindowname", window()}), "Window Trial\n");
    EXPECT_EQ(ask("text titleTextField"),
              "Du wirst gefragt, ob das Hintergrundobjekt ausgeführt werden darf.");
    EXPECT_EQ(ask("text subtitleTextField").substr(0, 12), "Erlaube dies");
    EXPECT_EQ(ask("text systemSettingsButton"), "System Settings");
    EXPECT_EQ(ask("background"), "light");
    portal.setColorScheme(1);
    EXPECT_TRUE(waitUntil([this] { return ask("background") == "dark"; }));
    portal.setColorScheme(0);
    EXPECT_TRUE(waitUntil([this] { return ask("background") == "light"; }));
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
            order(command);
            ASSERT_TRUE(opens());
            press(key);
            EXPECT_EQ(trial->readLine(), "dismissed");
            EXPECT_TRUE(closes());
        }
    }
}

TEST_F(Windows, TellOfAHelperToolWhileTheApplicationGoesOn) {
    start();
    order("helper");
    ASSERT_TRUE(opens());
    EXPECT_EQ(run({"xdotool", "getwindowname", window()}),
              "Die Verbindung zum Hilfsprogramm konnte nicht hergestellt werden.\n");
    EXPECT_EQ(ask("windows"), "1 of 1");
    press("Return");
    EXPECT_EQ(trial->readLine(), "dismissed");
}

TEST_F(Windows, LeaveAlertsToTheTerminalWhereThereIsNoDisplay) {
    environment.front() = "DISPLAY=";
    start();
    EXPECT_EQ(ask("alert"), "dismissed");
    EXPECT_EQ(ask("alertElsewhere"), "dismissed");
    EXPECT_EQ(ask("show"), "shown");
}

} // namespace
