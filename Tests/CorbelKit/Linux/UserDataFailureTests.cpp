// What is left of saves that fail, where alerts are lines on standard error and a login manager
// grants the activities.

#include "CorbelKit/Services/UserDataProtocols.h"
#include "Platform/MainThread.h"
#include "Tests/CorbelKit/Note.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/LoginManager.h"
#include "Tests/Support/MainLoop.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/WaitUntil.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <iterator>

using namespace CorbelKit;
using Platform::URL;
using TestSupport::waitUntil;

namespace {

namespace fs = std::filesystem;

/// Lets no file grow beyond so many bytes: to a program that is as good as a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
        : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{.rlim_cur = bytes, .rlim_max = before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit before_{};
    void (*handler_)(int);
};

std::ptrdiff_t openDescriptors() {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

class Model final : public UserDataProtocol<std::vector<Note>> {
public:
    std::vector<Note> userData() const override { return notes; }

    std::optional<URL> url() const override { return place; }

    std::vector<Note> notes;
    std::optional<URL> place;
};

class UserDataFailure : public ::testing::Test {
protected:
    /// Saves, and gives what the user is told of it.
    std::string alertOf(void (Model::*save)() const) {
        testing::internal::CaptureStderr();
        (model.*save)();
        bool done = false;
        QueuedSave::shared().write({}, URL::file((folder / "fence").string()), [&](const auto&) {
            Platform::MainThread::run([&] { done = true; });
        });
        EXPECT_TRUE(waitUntil([&] {
            TestSupport::drainMainLoop();
            return done;
        }));
        return testing::internal::GetCapturedStderr();
    }

    TestSupport::TemporaryFolder folder;
    TestSupport::BusDaemon bus;
    TestSupport::EnvironmentVariable address{"DBUS_SYSTEM_BUS_ADDRESS", bus.address()};
    TestSupport::LoginManager loginManager{bus.address()};
    Model model;
};

TEST_F(UserDataFailure, IsToldOnceAndLeavesNothingOpen) {
    model.notes = {Note(std::string(100'000, 'x'))};
    const auto file = (folder / "Notes.plist").string();
    const auto told = [](const std::string& reason) {
        return "An error occurred while saving: " + reason + "\n";
    };

    const struct {
        std::string path, reason;
    } cases[] = {
        {(folder / "missing/Notes.plist").string(), ": No such file or directory"},
        {folder.path().string(), ": Is a directory"},
        {file, "cannot write: File too large"},
    };

    model.place = URL::file(file);
    EXPECT_EQ(alertOf(&Model::save), ""); // what stays open for good is open now
    EXPECT_TRUE(waitUntil([&] { return loginManager.inhibitorsOpen() == 0; }));
    const auto before = openDescriptors();
    for (const auto& [path, reason] : cases) {
        const FileSizeLimit limit(4096);
        model.place = URL::file(path, URL::DirectoryHint::notDirectory);
        for (const auto save : {&Model::save, &Model::saveSynchronously}) {
            const auto alert = alertOf(save);
            EXPECT_EQ(alert, told((reason.starts_with(':') ? path : "") + reason));
        }
        EXPECT_EQ(model.notes.front().text.size(), 100'000U);
    }
    // The login manager, in this process too, lets go of an inhibitor when it sees its end.
    EXPECT_TRUE(waitUntil([&] { return loginManager.inhibitorsOpen() == 0; }));
    EXPECT_TRUE(waitUntil([&] { return openDescriptors() == before; }));
    EXPECT_EQ(alertOf(&Model::saveSynchronously), "");
    EXPECT_EQ(UserDataFile::load<Note>(model.place)->front().text, model.notes.front().text);
}

TEST_F(UserDataFailure, OfAValueThatHasNoFormLeavesTheOldFile) {
    model.place = URL::file((folder / "Notes.plist").string());
    model.notes = {Note("old")};
    EXPECT_EQ(alertOf(&Model::saveSynchronously), "");
    model.notes = {Note("new"), Note("no text\xff")};
    EXPECT_EQ(alertOf(&Model::save),
              "An error occurred while saving: [1].text: The text is not UTF-8.\n");
    EXPECT_EQ(alertOf(&Model::saveSynchronously), "");
    EXPECT_EQ(textsOf(*UserDataFile::load<Note>(model.place)), std::vector<std::string>{"old"});
}

TEST_F(UserDataFailure, HoldsTheSystemForEachWriteAndSaysWhatFor) {
    model.place = URL::file((folder / "Notes.plist").string());
    for (const auto save : {&Model::save, &Model::saveSynchronously})
        EXPECT_EQ(alertOf(save), "");
    // Between the two lies the write that the first one was waited for with.
    for (const auto* reason :
         {"Queued saving user data", "Queued saving user data", "Sync saving user data"}) {
        const auto call = loginManager.next();
        ASSERT_TRUE(call);
        EXPECT_EQ(call->why, reason);
        EXPECT_EQ(call->mode, "block");
    }
}

} // namespace
