#include "Platform/FileContents.h"
#include "Tests/Support/Testing.h"

#include <sys/stat.h>

#include <algorithm>
#include <thread>

using namespace TestSupport;
namespace FileContents = Platform::FileContents;

namespace {

class FileReplacement : public ::testing::Test {
protected:
    static std::string replace(const fs::path& file, std::string_view content) {
        const auto error = FileContents::replace(fileURL(file), bytesOf(content));
        return error ? error->description : contentOf(file);
    }

    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder.path()))
            names.push_back(entry.path().filename());
        std::ranges::sort(names);
        return names;
    }

    TemporaryFolder folder;
};

TEST_F(FileReplacement, KeepsWhatTheFileIsToOthers) {
    writeFile(folder / "file", "a longer one");
    fs::permissions(folder / "file", fs::perms(0640));
    fs::create_directory(folder / "links");
    fs::create_symlink("../there", folder / "links/one");
    fs::create_symlink("links/one", folder / "two");
    fs::create_symlink("../file", folder / "links/file");
    // Left by a process that was ended as it saved.
    writeFile(folder / ".file.saving", "something that is longer than the new content");
    for (const auto* name : {"file", "links/file", "two", "two"})
        EXPECT_EQ(replace(folder / name, name), name);
    EXPECT_EQ(fs::status(folder / "file").permissions(), fs::perms(0640));
    EXPECT_EQ(contentOf(folder / "there"), "two");
    EXPECT_TRUE(fs::is_symlink(folder / "links/one"));
    EXPECT_TRUE(fs::is_symlink(folder / "links/file"));
    const std::string longName(250, 'x'); // beside which no longer one can stand
    EXPECT_EQ(replace(folder / longName, "long"), "long");
    EXPECT_EQ(names(), (std::vector<std::string>{"file", "links", "there", "two", longName}));
}

TEST_F(FileReplacement, LeavesAloneWhatItMayNotReplace) {
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    fs::create_directory(folder / "folder");
    fs::create_symlink("circle", folder / "circle");
    writeFile(folder / "file", "before");
    const auto path = [&](const char* name) { return (folder / name).string(); };
    EXPECT_EQ(replace(folder / "pipe", "x"), path("pipe") + ": No such device or address");
    EXPECT_EQ(replace(folder / "folder", "x"), path("folder") + ": Is a directory");
    EXPECT_EQ(replace(folder / "file/below", "x"), path("file/below") + ": Not a directory");
    EXPECT_THAT(replace(folder / "circle", "x"), testing::StartsWith(path("circle")));
    EXPECT_EQ(FileContents::replace(fileURL(folder / "file"), bytesOf("x"),
                                    [](const auto&) { return Platform::Error{"no room"}; })
                  ->description,
              "no room");
    EXPECT_EQ(contentOf(folder / "file"), "before");
    EXPECT_EQ(names(), (std::vector<std::string>{"circle", "file", "folder", "pipe"}));
}

TEST_F(FileReplacement, IsWholeHoweverManyReplaceAtOnce) {
    std::vector<std::thread> writers;
    for (const char letter : {'a', 'b', 'c'}) {
        writers.emplace_back([&, letter] {
            for (int round = 1; round < 50; ++round) {
                EXPECT_FALSE(FileContents::replace(
                    fileURL(folder / "file"),
                    bytesOf(std::string(static_cast<std::size_t>(round) * 1000, letter))));
            }
        });
    }
    for (auto& writer : writers)
        writer.join();
    const auto content = contentOf(folder / "file");
    EXPECT_EQ(content.size(), 49'000U);
    EXPECT_EQ(content.find_first_not_of(content.front()), std::string::npos);
    EXPECT_EQ(names(), std::vector<std::string>{"file"});
}

} // namespace
