#include "Platform/FileHandle.h"
#include "Tests/Support/Testing.h"

#include <fcntl.h>
#include <unistd.h>

using namespace TestSupport;
using Platform::FileHandle;

TEST(FileHandle, IsAbsentWhereNothingCanBeOpened) {
    const TemporaryFolder folder;
    fs::create_symlink("nowhere", folder / "dangling");
    fs::create_symlink("circular", folder / "circular");
    writeFile(folder / "file", "");
    // Of the last one the system would see only the part before the NUL, and open it.
    using namespace std::string_view_literals;
    for (const auto name : {"missing"sv, "dangling"sv, "circular"sv, "file/below"sv, "file\0x"sv})
        EXPECT_FALSE(FileHandle::openForReading(fileURL(folder.path()).appending(name))) << name;
}

TEST(FileHandle, GivesTheDescriptorUpOnceAndOnlyOnce) {
    auto pipe = Platform::Pipe::make();
    ASSERT_TRUE(pipe);
    auto& end = pipe->fileHandleForReading;
    const int descriptor = end.fileDescriptor();
    EXPECT_FALSE(end.close());
    EXPECT_EQ(end.fileDescriptor(), -1);
    EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);

    // The number now belongs to somebody else, whom a second close must not hit.
    const FileHandle other(dup(0));
    ASSERT_EQ(other.fileDescriptor(), descriptor);
    EXPECT_FALSE(end.close());
    EXPECT_NE(fcntl(descriptor, F_GETFD), -1);

    FileHandle foreign(dup(0));
    ::close(foreign.fileDescriptor());
    EXPECT_TRUE(foreign.close());
    EXPECT_EQ(foreign.fileDescriptor(), -1);
}
