// Trees that Linux allows: longer than any path, with names that are no text.

#include "CorbelKit/Formats/FileItem.h"
#include "Tests/Support/Testing.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

TEST(DeepFileItem, HoldsEveryLevelOfATreeDeeperThanAnyPath) {
    constexpr int levels = 5000;
    const TestSupport::TemporaryFolder folder;
    int level = open(folder.path().c_str(), O_PATH | O_DIRECTORY);
    for (int count = 0; count < levels; ++count) {
        ASSERT_EQ(mkdirat(level, "\xff", 0700), 0);
        const int below = openat(level, "\xff", O_PATH | O_DIRECTORY);
        close(level);
        level = below;
    }
    close(level);
    const auto root = CorbelKit::FileItem::make(TestSupport::folderURL(folder.path()), true);
    ASSERT_TRUE(root) << root.error().description;
    auto deepest = *root;
    int depth = 0;
    for (; deepest.childCount() == 1; ++depth)
        deepest = deepest.child(0);
    EXPECT_EQ(depth, levels);
    EXPECT_EQ(deepest.name(), "\xff");
    EXPECT_EQ(deepest.url().path().size(), folder.path().string().size() + 2 * levels);
    // Whoever removes the folder at the end holds a descriptor for each level.
    EXPECT_EQ(std::system(("rm -rf " + folder.path().string() + "/*").c_str()), 0);
}
