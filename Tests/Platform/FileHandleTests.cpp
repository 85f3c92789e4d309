#include "Platform/FileHandle.h"
#include "Tests/Platform/ReadAll.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <string>

using Platform::FileHandle;
using Platform::Pipe;
using Platform::URL;

namespace {

URL url(const std::filesystem::path& path) {
    return URL::file(path.string());
}

bool isOpen(int descriptor) {
    return fcntl(descriptor, F_GETFD) != -1;
}

} // namespace

TEST(FileHandle, ReadsARegularFileAlsoBehindALink) {
    const TestSupport::TemporaryFolder folder;
    const std::string content(2500, 'x');
    TestSupport::writeFile(folder / "file", content);
    std::filesystem::create_symlink("file", folder / "link");
    for (const auto* name : {"file", "link"}) {
        auto handle = FileHandle::openForReading(url(folder / name));
        ASSERT_TRUE(handle);
        EXPECT_EQ(handle->kind(), FileHandle::Kind::regular);
        EXPECT_EQ(readAll(*handle), content);
    }
}

TEST(FileHandle, OpensWithoutWaitingAndTellsWhatIsNoFile) {
    const TestSupport::TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    const auto kindAt = [](const std::filesystem::path& path) {
        const auto handle = FileHandle::openForReading(url(path));
        return handle ? std::optional(handle->kind()) : std::nullopt;
    };
    EXPECT_EQ(kindAt(folder / "pipe"), FileHandle::Kind::other);
    EXPECT_EQ(kindAt("/dev/zero"), FileHandle::Kind::other);
    EXPECT_EQ(kindAt(folder.path()), FileHandle::Kind::directory);
}

TEST(FileHandle, IsAbsentWhereNothingCanBeOpened) {
    const TestSupport::TemporaryFolder folder;
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    std::filesystem::create_symlink("circular", folder / "circular");
    TestSupport::writeFile(folder / "file", "");
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    (folder / "socket").string().copy(address.sun_path, sizeof address.sun_path - 1);
    const FileHandle socketHandle(socket(AF_UNIX, SOCK_STREAM, 0));
    ASSERT_GE(socketHandle.fileDescriptor(), 0);
    ASSERT_EQ(
        bind(socketHandle.fileDescriptor(), reinterpret_cast<sockaddr*>(&address), sizeof address),
        0);
    for (const auto* name : {"missing", "dangling", "circular", "socket", "file/below"})
        EXPECT_FALSE(FileHandle::openForReading(url(folder / name))) << name;
    // The system would see only the part before the NUL, and open it.
    EXPECT_FALSE(
        FileHandle::openForReading(url(folder.path()).appending(std::string_view("file\0x", 6))));
}

TEST(FileHandle, IsAbsentForAFileThatMayNotBeRead) {
    if (geteuid() == 0)
        GTEST_SKIP() << "root may read everything";
    const TestSupport::TemporaryFolder folder;
    TestSupport::writeFile(folder / "file", "");
    std::filesystem::permissions(folder / "file", std::filesystem::perms::none);
    EXPECT_FALSE(FileHandle::openForReading(url(folder / "file")));
}

TEST(FileHandle, GivesTheDescriptorUpOnceAndOnlyOnce) {
    auto pipe = Pipe::make();
    ASSERT_TRUE(pipe);
    auto& end = pipe->fileHandleForReading;
    const int descriptor = end.fileDescriptor();
    EXPECT_FALSE(end.close());
    EXPECT_EQ(end.fileDescriptor(), -1);
    EXPECT_FALSE(isOpen(descriptor));

    // The number now belongs to somebody else, whom a second close must not hit.
    const FileHandle other(dup(0));
    ASSERT_EQ(other.fileDescriptor(), descriptor);
    EXPECT_FALSE(end.close());
    EXPECT_TRUE(isOpen(descriptor));

    FileHandle foreign(dup(0));
    ::close(foreign.fileDescriptor());
    EXPECT_TRUE(foreign.close());
    EXPECT_EQ(foreign.fileDescriptor(), -1);
}

TEST(FileHandle, ClosesWhatAMoveReplaces) {
    auto pipe = Pipe::make();
    ASSERT_TRUE(pipe);
    const int replaced = pipe->fileHandleForReading.fileDescriptor();
    const int kept = pipe->fileHandleForWriting.fileDescriptor();
    pipe->fileHandleForReading = std::move(pipe->fileHandleForWriting);
    EXPECT_FALSE(isOpen(replaced));
    EXPECT_EQ(pipe->fileHandleForReading.fileDescriptor(), kept);
    EXPECT_TRUE(isOpen(kept));
}

TEST(FileHandle, IsNotInheritedByAStartedProcess) {
    const auto pipe = Pipe::make();
    ASSERT_TRUE(pipe);
    const auto folder = FileHandle::openForReading(URL::file("/"));
    ASSERT_TRUE(folder);
    for (const int descriptor :
         {pipe->fileHandleForReading.fileDescriptor(), pipe->fileHandleForWriting.fileDescriptor(),
          folder->fileDescriptor()})
        EXPECT_EQ(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
}

TEST(FileHandle, SaysWhyBytesWereNotReadOrWritten) {
    auto pipe = Pipe::make();
    ASSERT_TRUE(pipe);
    std::array<std::byte, 1> byte{};
    const auto count = pipe->fileHandleForWriting.read(byte);
    ASSERT_FALSE(count);
    EXPECT_FALSE(count.error().description.empty());

    const auto before = std::signal(SIGPIPE, SIG_IGN);
    pipe->fileHandleForReading.close();
    const auto error = pipe->fileHandleForWriting.write(byte);
    std::signal(SIGPIPE, before);
    ASSERT_TRUE(error);
    EXPECT_FALSE(error->description.empty());
}
