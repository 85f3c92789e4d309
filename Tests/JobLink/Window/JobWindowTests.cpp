// The window of a job, on a desktop, used by keyboard and as a screen reader has it.

#include "Platform/Base64.h"
#include "Tests/Support/Linux/AgentTrial.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/BusService.h"
#include "Tests/Support/Linux/DesktopSession.h"
#include "Tests/Support/Linux/HungFile.h"
#include "Tests/Support/Linux/MainApplication.h"
#include "Tests/Support/Linux/NotificationService.h"
#include "Tests/Support/Linux/ScreenReader.h"
#include "Tests/Support/Testing.h"

#include <sys/stat.h>

#include <algorithm>
#include <mutex>

namespace {

using namespace TestSupport;
using testing::HasSubstr;
using testing::Not;

std::string linkTo(const fs::path& file) {
    return "vesperpro10joburl://" + Platform::base64EncodedString(file.string());
}

class JobWindow : public ::testing::Test {
protected:
    JobWindow() {
        fs::create_directories(jobs);
        fs::create_directories(entries);
        environment = {"DISPLAY=" + session.display(),
                       "DBUS_SESSION_BUS_ADDRESS=" + bus.address(),
                       "HOME=" + folder.path().string(),
                       "XDG_CONFIG_HOME=" + configuration.string(),
                       "XDG_DATA_HOME=" + (folder / "data").string(),
                       "CORBEL_STARTUP_FOLDERS=" + jobs.string() + ":" + entries.string(),
                       "LANGUAGE=en",
                       "LC_ALL=en_US.UTF-8",
                       "GSK_RENDERER=cairo",
                       "GDK_DEBUG=gl-disable",
                       "LSAN_OPTIONS=detect_leaks=0"}; // fontconfig keeps its own
    }

    /// The first one is the application, the others hand over to it.
    void open(const std::vector<std::string>& links) {
        std::vector<std::string> command{CORBEL_JOB_LINK};
        command.insert(command.end(), links.begin(), links.end());
        processes.push_back(std::make_unique<ChildProcess>(command, environment));
    }

    std::string run(std::vector<std::string> command) const {
        return ChildProcess(std::move(command), environment).readAll();
    }

    bool waitForWindows(std::ptrdiff_t count) const {
        return waitUntil([&] {
            const auto found =
                run({"xdotool", "search", "--onlyvisible", "--class", "com.tarnwell.VesperPro10"});
            return std::ranges::count(found, '\n') == count;
        });
    }

    /// What is read out, once it holds the text.
    std::string reads(const std::string& text) const {
        std::string all;
        waitUntil([&] {
            all = ScreenReader::read(bus.address());
            return all.find(text) != std::string::npos;
        });
        return all;
    }

    /// A screen reader is given a window, and what has the focus, before it is in front.
    void press(const std::string& key) const {
        if (session.waitForActiveWindow())
            run({"xdotool", "key", key});
    }

    DesktopSession session;
    BusDaemon bus{{{ScreenReader::busName, ScreenReader::service}}};
    TemporaryFolder folder;
    const fs::path configuration = folder / "configuration";
    const fs::path jobs = folder / "jobs";
    const fs::path entries = folder / "xdg/autostart";
    std::vector<std::string> environment;
    std::vector<std::unique_ptr<ChildProcess>> processes;
};

TEST_F(JobWindow, SaysWhatTheJobIsAndTakesBackWhatItDoes) {
    const auto entry = entries / "backup.desktop";
    const auto own = configuration / "autostart/backup.desktop";
    const auto settings = configuration / "tarnwell/QX42K7M3ZP.com.tarnwell.Vesper.plist";
    writeFile(entry, "[Desktop Entry]\nName=Backup\nExec=backup \x1B[2J\nOnlyShowIn=GNOME;\n");
    fs::permissions(entry, fs::perms(0640));
    open({linkTo(entry)});
    EXPECT_THAT(reads("Installed by no package"), HasSubstr(R"(label "Backup"
)"));
    const auto all = reads("Show in Files\" focused");
    for (const std::string line :
         {"window \"backup.desktop\"", "label \"Runs\"\nlabel \"backup \\u{1B}[2J\"",
          "label \"Starts\"\nlabel \"At login\nOnly in GNOME\"",
          "label \"Permissions\"\nlabel \"u=rw-,g=r--,o=--- 640\"",
          "button \"Show in Files\" focused\nbutton \"Copy Path\"\nbutton \"Turn Off\"\n"
          "button \"Ignore This Job\"\n"})
        EXPECT_THAT(all, HasSubstr(line));

    press("alt+i");
    reads("You are not notified of this job any more.");
    EXPECT_THAT(contentOf(settings), HasSubstr("<string>backup.desktop</string>"));
    press("alt+n");
    reads("You are notified of this job again.");
    EXPECT_THAT(contentOf(settings), Not(HasSubstr("backup")));
    press("alt+t");
    EXPECT_THAT(reads("This job is turned off."), HasSubstr("button \"Turn On Again\""));
    EXPECT_THAT(contentOf(own), HasSubstr("[Desktop Entry]\nHidden=true\n"));
    press("alt+t");
    reads("button \"Turn Off\"");
    EXPECT_FALSE(fs::exists(own));

    fs::remove_all(configuration);
    writeFile(configuration, "no folder");
    press("alt+i");
    EXPECT_THAT(reads("could not be written"), HasSubstr("button \"Ignore This Job\""));
    press("alt+t");
    reads("could not be turned off");
    fs::remove(entry);
    EXPECT_THAT(reads("This file is no longer there."), HasSubstr("label \"Runs\""));
    press("Escape");
    EXPECT_EQ(processes.front()->readAll(), ""); // the last window was the application
}

constexpr auto fileManagerDescription = R"(<node><interface name='org.freedesktop.FileManager1'>
<method name='ShowItems'><arg type='as' direction='in'/><arg type='s' direction='in'/></method>
</interface></node>)";

TEST_F(JobWindow, ShowsItsFileInTheFileManagerAndCopiesItsPath) {
    std::mutex mutex;
    std::string shown;
    const auto entry = entries / "a b.desktop";
    writeFile(entry, "[Desktop Entry]\n");
    open({linkTo(entry)});
    reads("button \"Show in Files\" focused");
    press("alt+s");
    EXPECT_THAT(reads("No application here"), HasSubstr("here shows folders."));
    const BusService fileManager(
        bus.address(), "org.freedesktop.FileManager1",
        {"/org/freedesktop/FileManager1", "org.freedesktop.FileManager1", fileManagerDescription},
        [&](GDBusMethodInvocation* call) {
            const std::unique_ptr<char, void (*)(void*)> text(
                g_variant_print(g_dbus_method_invocation_get_parameters(call), FALSE), g_free);
            const std::lock_guard lock(mutex);
            shown = text.get();
            g_dbus_method_invocation_return_value(call, nullptr);
        });
    press("alt+s");
    const auto call = "(['file://" + (entries / "a%20b.desktop").string() + "'], '')";
    EXPECT_TRUE(waitUntil([&] {
        const std::lock_guard lock(mutex);
        return shown == call;
    }));
    press("alt+c");
    reads("The path was copied.");
    ChildProcess other({"zenity", "--entry"}, environment);
    run({"xdotool", "search", "--sync", "--onlyvisible", "--class", "zenity", "windowactivate",
         "--sync"});
    press("ctrl+v");
    press("Return");
    EXPECT_EQ(other.readLine(), entry.string());
}

/// The file's disk has gone away: its window is there all the same, and can be closed.
TEST_F(JobWindow, WaitsForNoFileThatDoesNotAnswer) {
    writeFile(jobs / "hung", "x");
    HungFile hung(jobs / "hung");
    if (!hung.isHung())
        GTEST_SKIP() << "without the right to let a file hang";
    open({linkTo(jobs / "hung")});
    EXPECT_THAT(reads("button \"Show in Files\" focused"), HasSubstr("Reading…"));
    EXPECT_TRUE(hung.isAsked());
    press("Escape");
    EXPECT_TRUE(waitForWindows(0));
    open({linkTo(jobs / "other")});
    EXPECT_THAT(reads("This file is"), HasSubstr("is no longer there."));
    hung.answer();
}

TEST_F(JobWindow, IsOneForEachJobHoweverManyLinksComeAndWhateverTheyLeadTo) {
    fs::create_symlink("/etc/passwd", jobs / "link");
    mkfifo((jobs / "fifo").c_str(), S_IRUSR | S_IWUSR);
    writeFile(jobs / "large", "x");
    fs::resize_file(jobs / "large", std::uintmax_t{3} << 30);
    writeFile(jobs / "\xFF.plist", "{ Label = label; }");
    open({linkTo(jobs / "link")});
    EXPECT_THAT(reads("This is a link to /etc/passwd, which was not opened."),
                Not(HasSubstr("root:")));
    const std::vector<std::pair<std::string, std::string>> cases{
        {linkTo(jobs / "fifo"), "This is not a file and was not opened."},
        {linkTo(jobs / "large"), "This file is too large for a job."},
        {linkTo(jobs / "nothing"), "This file is no longer there."},
        {linkTo(jobs / "\xFF.plist"), "The name of this file is not text."},
        {linkTo("/etc/passwd"), "This file is in no watched folder and was not opened."},
        {"vesperpro10joburl://?", "This link names no job."},
        {linkTo(jobs / "../jobs/fifo"), "This file is in no watched folder and was not opened."}};
    for (const auto& [link, words] : cases) {
        open({link});
        EXPECT_THAT(reads(words), HasSubstr(words));
    }
    EXPECT_TRUE(waitForWindows(6)) << "one says what was refused";
    std::vector<std::string> flood(2000, linkTo(jobs / "fifo"));
    for (int number = 0; number < 40; ++number)
        flood.push_back(linkTo(jobs / std::to_string(number)));
    open(flood);
    EXPECT_THAT(reads("Too many windows"), HasSubstr("are open. Close one and try again."));
    EXPECT_TRUE(waitForWindows(13));
}

TEST_F(JobWindow, IsOpenedFromTheListThatIsReadOutAndSortedByKeyboard) {
    writeFile(entries / "first.desktop", "[Desktop Entry]\nExec=ant\n");
    writeFile(entries / "second.desktop", "[Desktop Entry]\nExec=zebra --all\n");
    open({});
    const auto all = reads("zebra --all");
    EXPECT_LT(all.find("row \"first.desktop\""), all.find("label \"ant\""));
    EXPECT_LT(all.find("label \"ant\""), all.find("row \"second.desktop\""));
    const std::vector<std::pair<std::string, std::string>> steps{
        {"Tab", "column header \"Name\" focused"},
        {"Tab", "column header \"Runs\" focused"},
        {"Return", "column header \"Runs\" focused"},
        {"Return", "column header \"Runs\" focused"}, // the other way round
        {"Tab", "column header \"Starts\" focused"},
        {"Tab", "column header \"Changed\" focused"},
        {"Tab", "row \"first.desktop\" focused"},
        {"Home", "row \"second.desktop\" focused"},
        {"Return", "button \"Show in Files\" focused"}};
    for (const auto& [key, focused] : steps) {
        press(key);
        EXPECT_THAT(reads(focused), HasSubstr(focused)) << key;
    }
    const auto* const runs = "label \"Runs\"\nlabel \"zebra --all\"";
    EXPECT_THAT(reads(runs), HasSubstr(runs));

    for (const std::string key : {"Escape", "Return"}) { // closed, and opened again
        press(key);
        EXPECT_TRUE(waitForWindows(key == "Return" ? 2 : 1)) << key;
    }
    open({});
    EXPECT_THAT(reads("row \"second.desktop\" focused"), HasSubstr("focused"));
    press("ctrl+w");
    EXPECT_TRUE(waitForWindows(1));
    open({});
    EXPECT_TRUE(waitForWindows(2)) << "the list, beside the job's window";
}

/// The first day: an agent, its notification, and the installed application.
TEST_F(JobWindow, OpensByShowKeepsTheAgentSilentAndExceptsItsJob) {
    NotificationService service(bus.address());
    AgentTrial trial(CORBEL_AGENT);
    installMainApplication(trial.home(), "");
    auto entry = contentOf(CORBEL_JOB_LINK_ENTRY);
    const std::string command = "env \"@startup_folders@\" vesper-job-link";
    ASSERT_NE(entry.find(command), std::string::npos);
    entry.replace(entry.find(command), command.size(), CORBEL_JOB_LINK);
    writeFile(trial.home() / ".local/share/applications/com.tarnwell.VesperPro10.desktop", entry);
    for (const auto& variable : environment) {
        const auto sign = variable.find('=');
        trial.environment[variable.substr(0, sign)] = variable.substr(sign + 1);
    }
    trial.environment["HOME"] = trial.home();
    trial.environment.erase("XDG_DATA_HOME");
    trial.environment.erase("XDG_CONFIG_HOME");
    ASSERT_TRUE(trial.start());

    writeFile(entries / "first.desktop", "[Desktop Entry]\nExec=first\n");
    const auto first = service.next();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->body, "New: " + (entries / "first.desktop").string());
    service.emitActionInvoked(first->number, "ShowAction");
    reads("button \"Show in Files\" focused");
    EXPECT_TRUE(session.waitForActiveWindow() && waitForWindows(1));
    writeFile(entries / "second.desktop", "[Desktop Entry]\nExec=second\n");
    EXPECT_TRUE(trial.waitUntilAtRest());
    press("alt+i");
    reads("You are not notified of this job any more.");
    press("Escape");
    EXPECT_TRUE(waitForWindows(0));
    replaceFile(entries / "first.desktop", "[Desktop Entry]\nExec=changed\n");
    EXPECT_TRUE(trial.waitUntilAtRest());
    writeFile(entries / "third.desktop", "[Desktop Entry]\nExec=third\n");
    const auto next = service.next();
    ASSERT_TRUE(next);
    EXPECT_EQ(next->body, "New: " + (entries / "third.desktop").string());
}

} // namespace
