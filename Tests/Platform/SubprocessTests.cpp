#include "Platform/Subprocess.h"
#include "Tests/Platform/ReadAll.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/WaitUntil.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

using Platform::FileHandle;
using Platform::Pipe;
using Platform::Subprocess;
using Platform::URL;
using TestSupport::waitUntil;

namespace {

Pipe makePipe() {
    return std::move(Pipe::make().value());
}

Subprocess shell(const std::string& script) {
    return {.executableURL = URL::file("/bin/sh"), .arguments = {"-c", script}, .environment = {}};
}

/// What the process wrote up to its end, or why it did not start.
std::string outputOf(Subprocess subprocess) {
    auto pipe = makePipe();
    subprocess.standardOutput = pipe.fileHandleForWriting.fileDescriptor();
    if (const auto error = subprocess.launch())
        return error->description;
    pipe.fileHandleForWriting.close();
    return readAll(pipe.fileHandleForReading);
}

bool isGone(pid_t process) {
    // A dead process that nobody collected still takes signals.
    return kill(process, 0) == -1 && errno == ESRCH;
}

std::ptrdiff_t countOfDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/dev/fd"), {});
}

} // namespace

TEST(Subprocess, SortsOutStreamsThatOverlapWithItsOwn) {
    auto first = makePipe();
    auto second = makePipe();
    const FileHandle ourOutput(dup(1));
    const FileHandle ourErrors(dup(2));
    auto swapped = shell("printf out; printf err >&2");
    swapped.standardOutput = 2;
    swapped.standardError = 1;
    dup2(first.fileHandleForWriting.fileDescriptor(), 1);
    dup2(second.fileHandleForWriting.fileDescriptor(), 2);
    const auto error = swapped.launch();
    dup2(ourOutput.fileDescriptor(), 1);
    dup2(ourErrors.fileDescriptor(), 2);
    EXPECT_FALSE(error);
    first.fileHandleForWriting.close();
    second.fileHandleForWriting.close();
    EXPECT_EQ(readAll(first.fileHandleForReading), "err");
    EXPECT_EQ(readAll(second.fileHandleForReading), "out");
}

TEST(Subprocess, SaysWhyItCannotStart) {
    const TestSupport::TemporaryFolder folder;
    TestSupport::writeFile(folder / "not executable", "#!/bin/sh\n");
    for (const auto& path : {folder / "missing", folder / "not executable", folder.path()}) {
        const auto error = Subprocess{URL::file(path.string()), {}, {}}.launch();
        ASSERT_TRUE(error) << path;
        EXPECT_THAT(error->description, testing::HasSubstr(path.string() + ": "));
    }
    auto unusable = shell("exit");
    unusable.standardInput = -1;
    EXPECT_TRUE(unusable.launch());
    EXPECT_TRUE(shell(std::string("exit\0cut off", 12)).launch());
    EXPECT_TRUE((Subprocess{*URL::parse("https://host/bin/sh"), {}, {}}.launch()));
}

TEST(Subprocess, ReturnsBeforeTheProcessEndsAndCollectsItLater) {
    auto input = makePipe();
    auto output = makePipe();
    auto waiting = shell("echo $$; exec >&-; read line");
    waiting.standardInput = input.fileHandleForReading.fileDescriptor();
    waiting.standardOutput = output.fileHandleForWriting.fileDescriptor();
    ASSERT_FALSE(waiting.launch());
    output.fileHandleForWriting.close();
    const auto process = std::stoi(readAll(output.fileHandleForReading));
    EXPECT_FALSE(isGone(process));
    input.fileHandleForWriting.close();
    EXPECT_TRUE(waitUntil([&] { return isGone(process); }));
}

TEST(Subprocess, LeavesNoDescriptorOpenHereWhetherItStartedOrNot) {
    // What collects processes may keep descriptors of its own from the first one on.
    const auto first = std::stoi(outputOf(shell("echo $$")));
    ASSERT_TRUE(waitUntil([&] { return isGone(first); }));
    const auto before = countOfDescriptors();
    for (int count = 0; count < 20; ++count) {
        outputOf(shell("exit"));
        EXPECT_TRUE((Subprocess{URL::file("/nowhere"), {}, {}}.launch()));
    }
    EXPECT_TRUE(waitUntil([&] { return countOfDescriptors() <= before; }));
}

TEST(Subprocess, GivesTheProcessNoDescriptorButTheThree) {
    const FileHandle inheritable(fcntl(0, F_DUPFD, 77));
    ASSERT_GE(inheritable.fileDescriptor(), 77);
    const auto listed = outputOf(shell("ls /dev/fd"));
    EXPECT_THAT(listed, testing::StartsWith("0\n1\n2\n"));
    // The listing itself has one open.
    EXPECT_LE(std::ranges::count(listed, '\n'), 4) << listed;
}

TEST(Subprocess, HasTheDefaultEffectOfSignalsThatAreIgnoredOrBlockedHere) {
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto handler = std::signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(outputOf(shell("kill -PIPE $$; echo ignored")), "");
    EXPECT_EQ(outputOf(shell("kill -TERM $$; echo blocked")), "");
    std::signal(SIGPIPE, handler);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}
