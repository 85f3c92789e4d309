#include "CorbelKit/Formats/FileItem.h"
#include "Tests/Support/Testing.h"

using namespace TestSupport;

namespace {

using CorbelKit::Cancellation;
using CorbelKit::FileItem;

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
        writeFile(folder / path, "");
    }

    std::string at(const std::string& path) const { return folder / path; }

    const TemporaryFolder folder;
    const Platform::URL root = folderURL(folder.path());
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

TEST_F(FileItemTest, OfWhatIsNoFolderOrNoLongerWantedHasNoChildren) {
    makeFile("file");
    const auto cancelled = Cancellation::make();
    cancelled.cancel();
    const std::tuple<Platform::URL, bool, Cancellation> cases[] = {
        {root.appending("file"), false, {}},
        {root.appending("missing"), false, {}}, // what is no folder is not looked at
        {root, true, cancelled},
    };
    for (const auto& [url, isRoot, cancellation] : cases) {
        const auto item = FileItem::make(url, isRoot, cancellation);
        ASSERT_TRUE(item) << url.path();
        EXPECT_EQ(item->isRoot(), isRoot);
        EXPECT_EQ(item->childCount(), 0U) << url.path();
    }
}

TEST_F(FileItemTest, FailsAsAWholeWithTheReasonOfAFolder) {
    const auto missing = FileItem::make(root.appending("missing/"), true);
    ASSERT_FALSE(missing);
    EXPECT_THAT(missing.error().description, testing::HasSubstr("missing"));
    makeFile("a/file");
    EXPECT_FALSE(FileItem::make(root.appending("a/file/"), true));
    EXPECT_FALSE(FileItem::make(*Platform::URL::parse("https://example.org/"), true));
}

TEST_F(FileItemTest, IsMadeInATaskAndKeptByAnyOfItsNodesWhichShowAsPeopleCount) {
    for (const auto* name : {"a/File10", "a/file9", "a/File1", "a/Äpfel", "a/zebra"})
        makeFile(name);
    std::atomic<bool> done = false;
    std::optional<FileItem> node;
    FileItem::make(root, true, Cancellation::make(), Platform::DispatchQueue::serial("test"),
                   [&](const auto& item) {
                       node = item->child(0);
                       done = true;
                   });
    ASSERT_TRUE(waitUntil(done));
    std::vector<std::string_view> names;
    for (const auto& child : node->childrenInDisplayOrder())
        names.push_back(child.name());
    EXPECT_THAT(names, testing::ElementsAre("Äpfel", "File1", "file9", "File10", "zebra"));
}

} // namespace
