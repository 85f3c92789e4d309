#include "Platform/FolderHandle.h"
#include "Tests/Support/Testing.h"

using namespace TestSupport;
using Platform::FolderHandle;

TEST(FolderHandle, StaysWithItsFolderAndOpensNothingElse) {
    using namespace std::string_view_literals;
    const TemporaryFolder folder;
    fs::create_directories(folder / "here/below");
    writeFile(folder / "here/.job", "1");
    writeFile(folder / "outside", "");
    for (const auto name : {"missing", "outside"})
        EXPECT_FALSE(FolderHandle::open(fileURL(folder / name))) << name;
    const auto here = FolderHandle::open(fileURL(folder / "here"));
    ASSERT_TRUE(here);

    fs::rename(folder / "here", folder / "away"); // and another takes its place
    fs::create_directory(folder / "here");
    writeFile(folder / "here/.job", "two");
    for (int turn = 0; turn < 2; ++turn) {
        std::vector<std::string> names;
        EXPECT_FALSE(here->forEachName([&](auto name) { names.emplace_back(name); }));
        EXPECT_THAT(names, testing::UnorderedElementsAre("below", ".job"));
    }
    EXPECT_EQ(here->openForReading(".job")->size(), 1);
    const std::string tooLong(5000, 'x');
    for (const auto name : {""sv, "."sv, ".."sv, "../outside"sv, "below/.."sv, ".job\0x"sv,
                            std::string_view(tooLong), "missing"sv})
        EXPECT_FALSE(here->openForReading(name)) << name;
}
