#include "Platform/FileHandle.h"
#include "Tests/Platform/ReadAll.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

using Platform::FileHandle;
using Platform::URL;

namespace {

URL url(const std::filesystem::path& path) {
    return URL::file(path.string());
}

bool isOpen(int descriptor) {
    return fcntl(descriptor, F_GETFD) != -1;
}

} // namespace

TEST(FileHandle, IsAbsentWhereNothingCanBeOpened) {
    const TestSupport::TemporaryFolder folder;
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    std::filesystem::create_symlink("circular", folder / "circular");
    TestSupport::writeFile(folder / "file", "");
    for (const auto* name : {"missing", "dangling", "circular", "file/below"})
        EXPECT_FALSE(FileHandle::openForReading(url(folder / name))) << name;
    // The system would see only the part before the NUL, and open it.
    EXPECT_FALSE(
        FileHandle::openForReading(url(folder.path()).appending(std::string_view("file\0x", 6))));
}

TEST(FileHandle, GivesTheDescriptorUpOnceAndOnlyOnce) {
    auto pipe = Platform::Pipe::make();
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
