#pragma once

#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/DesktopSession.h"
#include "Tests/Support/Linux/ScreenReader.h"
#include "Tests/Support/Testing.h"

#include <sys/stat.h>

#include <fstream>

using namespace TestSupport;

/// The kit's windows as a user has them: an application of its own on a desktop, with a mouse and a
/// keyboard.
class WindowTest : public ::testing::Test {
protected:
    WindowTest() {
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
