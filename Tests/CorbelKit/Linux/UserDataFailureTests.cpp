// What is left of saves that fail, where alerts are lines on standard error and a login manager
// grants the activities.

#include "CorbelKit/Services/UserDataList.h"
#include "Tests/CorbelKit/Note.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/LoginManager.h"
#include "Tests/Support/MainLoop.h"
#include "Tests/Support/Testing.h"

#include <sys/resource.h>

#include <csignal>
#include <stdexcept>

using namespace CorbelKit;
using namespace TestSupport;

namespace {

using Notes = UserDataList<Note>;

struct Thrower {
    static void encode(Encoder& /*encoder*/) { throw std::runtime_error("no form"); }
};

class UserDataFailure : public ::testing::Test {
protected:
    /// The line that the save shows to the user.
    std::string alertOf(const std::function<void()>& save) {
        testing::internal::CaptureStderr();
        save();
        bool done = false;
        QueuedSave::shared().write({}, fileURL(folder / "fence"), [&](const auto&) {
            Platform::MainThread::run([&] { done = true; });
        });
        EXPECT_TRUE(waitUntil([&] {
            drainMainLoop();
            return done;
        }));
        return testing::internal::GetCapturedStderr();
    }

    TemporaryFolder folder;
    BusDaemon bus;
    EnvironmentVariable address{"DBUS_SYSTEM_BUS_ADDRESS", bus.address()};
    LoginManager loginManager{bus.address()};
    Platform::UndoManager undoManager;
    Notes notes{fileURL(folder / "Notes.plist"), undoManager};
};

TEST_F(UserDataFailure, IsShownOnceAndLeavesNothingOpen) {
    const Note note(std::string(100'000, 'x'));
    EXPECT_EQ(alertOf([&] { notes.put(note, 0, "Add"); }), ""); // what stays open is open now
    notes.saveSynchronously();
    for (const auto* reason :
         {"Queued saving user data", "Queued saving user data", "Sync saving user data"}) {
        const auto call = loginManager.next();
        EXPECT_TRUE(call && call->why == reason) << reason; // the second is that of the fence
    }
    EXPECT_TRUE(waitUntil([&] { return loginManager.inhibitorsOpen() == 0; }));
    const auto before = openDescriptors();
    const std::pair<fs::path, std::string> cases[] = {
        {folder / "missing/Notes.plist",
         (folder / "missing/Notes.plist: No such file or directory").string()},
        {folder.path(), folder.path().string() + ": Is a directory"},
        {notes.url()->path(), notes.url()->path() + ": cannot write: File too large"},
    };
    // To a program a limit of its files is as good as a full disk.
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit low{.rlim_cur = 4096, .rlim_max = limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &low);
    for (const auto& [path, reason] : cases) {
        Notes unsaved(fileURL(path), undoManager);
        const auto alert = "An error occurred while saving: " + reason + "\n";
        EXPECT_EQ(alertOf([&] { unsaved.put(Note("unsaved" + note.text), 0, "Add"); }), alert);
        EXPECT_EQ(alertOf([&] { unsaved.saveSynchronously(); }), alert);
        EXPECT_EQ(textsOf(unsaved.items()), textsOf({Note("unsaved" + note.text)}));
    }
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, handler);
    // The login manager, in this process too, lets go of an inhibitor when it sees its end.
    EXPECT_TRUE(waitUntil([&] { return loginManager.inhibitorsOpen() == 0; }));
    EXPECT_TRUE(waitUntil([&] { return openDescriptors() == before; }));
    // And what was saved before is all that there is.
    EXPECT_EQ(textsOf(*UserDataFile::load<Note>(notes.url())), textsOf({note}));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 2);
}

TEST_F(UserDataFailure, OfAValueThatHasNoFormLeavesTheOldFile) {
    EXPECT_EQ(alertOf([&] { notes.put(Note("old"), 0, "Add"); }), "");
    const auto beginning = "An error occurred while saving: " + notes.url()->path() + ": ";
    const auto noText = beginning + "[1].text: The text is not UTF-8.\n";
    EXPECT_EQ(alertOf([&] { notes.put(Note("no text\xff"), 1, "Add"); }), noText);
    EXPECT_EQ(alertOf([&] { EXPECT_TRUE(notes.saveSynchronously()); }), noText);
    EXPECT_EQ(alertOf([&] { QueuedSave::shared().save(std::vector{Thrower()}, *notes.url()); }),
              beginning + "no form\n");
    EXPECT_EQ(textsOf(*UserDataFile::load<Note>(notes.url())), textsOf({Note("old")}));
}

} // namespace
