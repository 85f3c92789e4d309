// What bookmarks promise within one process, whatever they are made of.

#include "Platform/Bookmark.h"
#include "Tests/Support/Testing.h"

using namespace Platform;
using namespace TestSupport;

TEST(BookmarkContract, FindsItsFileAgainWhereItWasMoved) {
    const TemporaryFolder temporary;
    const auto folder = temporary / "1/2/3/4/5/6"; // a search up there ends before it gets far
    fs::create_directories(folder);
    writeFile(folder / "file", "");
    const auto data = makeBookmark(fileURL(folder / "file"));
    ASSERT_TRUE(data);
    EXPECT_FALSE(SecurityScopedResource::resolve(*data)->isStale());
    fs::rename(folder / "file", folder / "moved");
    auto resource = SecurityScopedResource::resolve(*data);
    ASSERT_TRUE(resource);
    EXPECT_EQ(resource->url(), fileURL(folder / "moved"));
    EXPECT_TRUE(resource->isStale());
    EXPECT_TRUE(resource->startAccessing());
    resource->stopAccessing();
    fs::remove(folder / "moved");
    EXPECT_FALSE(resource->startAccessing());
    EXPECT_FALSE(SecurityScopedResource::resolve(*data));
    EXPECT_FALSE(makeBookmark(fileURL(folder / "moved")));
    EXPECT_FALSE(makeBookmark(*URL::parse("https://a")));
    for (const std::size_t length : {std::size_t{0}, data->size() / 2}) {
        EXPECT_FALSE(SecurityScopedResource::resolve(
            {data->begin(), data->begin() + static_cast<std::ptrdiff_t>(length)}));
    }
}
