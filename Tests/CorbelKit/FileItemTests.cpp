#include "CorbelKit/Formats/FileItem.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/WaitUntil.h"

#include <gmock/gmock.h>

#include <atomic>
#include <string>

using CorbelKit::Cancellation;
using CorbelKit::FileItem;
using Platform::URL;

namespace {

namespace fs = std::filesystem;

std::vector<std::string> pathsIn(const FileItem& item) {
    std::vector<std::string> paths;
    for (std::size_t index = 0; index < item.childCount(); ++index) {
        const auto child = item.child(index);
        EXPECT_FALSE(child.isRoot());
        EXPECT_EQ(child.name(), child.url().lastPathComponent());
        paths.push_back(child.url().path() + (child.url().hasDirectoryPath() ? "/" : ""));
        for (auto& below : pathsIn(child))
            paths.push_back(std::move(below));
    }
    return paths;
}

class FileItemTest : public ::testing::Test {
protected:
    void makeFile(const std::string& path) const {
        fs::create_directories((folder / path).parent_path());
        TestSupport::writeFile(folder / path, "");
    }

    std::string at(const std::string& path) const { return (folder / path).string(); }

    const TestSupport::TemporaryFolder folder;
    const URL root = URL::file(folder.path().string(), URL::DirectoryHint::isDirectory);
};

TEST_F(FileItemTest, HoldsAllThatIsShownAndFollowsNoLink) {
    makeFile("a/b/file");
    makeFile("a/.hidden/file");
    makeFile(".hidden");
    fs::create_directory(folder / "empty");
    fs::create_directory_symlink(folder.path(), folder / "a/cycle");
    const auto item = FileItem::make(root, true);
    ASSERT_TRUE(item) << item.error().description;
    EXPECT_TRUE(item->isRoot());
    EXPECT_EQ(item->url(), root);
    EXPECT_EQ(item->name(), folder.path().filename());
    EXPECT_THAT(pathsIn(*item), testing::UnorderedElementsAre(at("a/"), at("a/b/"), at("a/b/file"),
                                                              at("a/cycle"), at("empty/")));
}

TEST_F(FileItemTest, OfAFileOrACancelledTaskHasNoChildren) {
    makeFile("file");
    const auto file = FileItem::make(root.appending("file"), false);
    ASSERT_TRUE(file);
    EXPECT_FALSE(file->isRoot());
    EXPECT_EQ(file->childCount(), 0U);
    const auto unlisted = FileItem::make(root.appending("file/../missing"), false);
    EXPECT_TRUE(unlisted) << "what is no folder is not looked at";

    const auto cancellation = Cancellation::make();
    cancellation.cancel();
    const auto item = FileItem::make(root, true, cancellation);
    ASSERT_TRUE(item);
    EXPECT_EQ(item->url(), root);
    EXPECT_EQ(item->name(), folder.path().filename());
    EXPECT_EQ(item->childCount(), 0U);
}

TEST_F(FileItemTest, FailsAsAWholeWithTheReasonOfAFolder) {
    const auto missing = FileItem::make(root.appending("missing/"), true);
    ASSERT_FALSE(missing);
    EXPECT_NE(missing.error().description.find("missing"), std::string::npos);
    makeFile("a/file");
    EXPECT_FALSE(FileItem::make(root.appending("a/file/"), true));
    EXPECT_FALSE(FileItem::make(*URL::parse("https://example.org/"), true));
}

TEST_F(FileItemTest, ShowsChildrenAsPeopleCount) {
    for (const auto* name : {"File10", "file9", "File1", "Äpfel", "zebra"})
        makeFile(name);
    std::vector<std::string> names;
    {
        const auto item = FileItem::make(root, true);
        ASSERT_TRUE(item);
        for (const auto& child : item->childrenInDisplayOrder())
            names.emplace_back(child.name());
    }
    EXPECT_THAT(names, testing::ElementsAre("Äpfel", "File1", "file9", "File10", "zebra"));
}

TEST_F(FileItemTest, IsMadeInATaskAndKeptByAnyOfItsNodes) {
    makeFile("a/file");
    std::atomic<bool> done = false;
    std::optional<FileItem> leaf;
    FileItem::make(root, true, Cancellation::make(), Platform::DispatchQueue::serial("test"),
                   [&](const auto& item) {
                       leaf = item->child(0).child(0);
                       done = true;
                   });
    ASSERT_TRUE(TestSupport::waitUntil([&] { return done.load(); }));
    EXPECT_EQ(leaf->url().path(), at("a/file"));
}

} // namespace
