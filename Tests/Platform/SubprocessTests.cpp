#include "Platform/FileHandle.h"
#include "Platform/Subprocess.h"
#include "Tests/Support/Testing.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

using namespace TestSupport;
using Platform::FileHandle;
using Platform::Subprocess;
using Platform::URL;

namespace {

/// Everything up to the end of what is written to it elsewhere, or up to the first failure.
std::string readAll(Platform::Pipe& pipe) {
    pipe.fileHandleForWriting.close();
    std::string text;
    std::array<std::byte, 1000> buffer{};
    for (;;) {
        const auto count = pipe.fileHandleForReading.read(buffer);
        if (!count || *count == 0)
            return text;
        text += textOf(std::span(buffer).first(*count));
    }
}

Subprocess shell(const std::string& script) {
    return {.executableURL = URL::file("/bin/sh"), .arguments = {"-c", script}, .environment = {}};
}

/// What the process wrote up to its end, or why it did not start.
std::string outputOf(Subprocess subprocess) {
    auto pipe = *Platform::Pipe::make();
    subprocess.standardOutput = pipe.fileHandleForWriting.fileDescriptor();
    if (const auto error = subprocess.launch())
        return error->description;
    return readAll(pipe);
}

bool isGone(pid_t process) {
    // A dead process that nobody collected still takes signals.
    return kill(process, 0) == -1 && errno == ESRCH;
}

} // namespace

TEST(Subprocess, SortsOutStreamsThatOverlapWithItsOwn) {
    auto first = *Platform::Pipe::make();
    auto second = *Platform::Pipe::make();
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
    EXPECT_EQ(readAll(first), "err");
    EXPECT_EQ(readAll(second), "out");
}

TEST(Subprocess, SaysWhyItCannotStart) {
    const TemporaryFolder folder;
    writeFile(folder / "not executable", "#!/bin/sh\n");
    for (const auto& path : {folder / "missing", folder / "not executable", folder.path()}) {
        const auto error = Subprocess{fileURL(path), {}, {}}.launch();
        ASSERT_TRUE(error) << path;
        EXPECT_THAT(error->description, testing::HasSubstr(path.string() + ": "));
    }
    auto unusable = shell("exit");
    unusable.standardInput = -1;
    EXPECT_TRUE(unusable.launch());
    EXPECT_TRUE(shell(std::string("exit\0cut off", 12)).launch());
    EXPECT_TRUE((Subprocess{*URL::parse("https://host/bin/sh"), {}, {}}.launch()));
}

TEST(Subprocess, LeavesNoDescriptorOpenHereWhetherItStartedOrNot) {
    // What collects processes may keep descriptors of its own from the first one on.
    const auto first = std::stoi(outputOf(shell("echo $$")));
    ASSERT_TRUE(waitUntil([&] { return isGone(first); }));
    const auto before = openDescriptors();
    for (int count = 0; count < 20; ++count) {
        outputOf(shell("exit"));
        EXPECT_TRUE((Subprocess{URL::file("/nowhere"), {}, {}}.launch()));
    }
    EXPECT_TRUE(waitUntil([&] { return openDescriptors() <= before; }));
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
