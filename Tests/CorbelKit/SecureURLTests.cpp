#include "CorbelKit/Services/SecureURL.h"
#include "Platform/UserDefaults.h"
#include "Tests/Support/Testing.h"

using namespace TestSupport;

namespace {

using CorbelKit::SecureURL;
using Platform::PropertyList;

class SecureURLTest : public ::testing::Test {
protected:
    SecureURLTest() { writeFile(file, ""); }

    // On some systems the settings outlive the process.
    ~SecureURLTest() override { settings().remove(key); }

    static Platform::UserDefaults& settings() { return Platform::UserDefaults::standard(); }

    static inline const std::string key = "SecureURLTest";
    const TemporaryFolder folder;
    const fs::path file = folder / "file";
};

TEST_F(SecureURLTest, ComesBackFromItsKeyAsAnotherObjectOfTheSameFile) {
    for (const auto& saved : {fileURL(file), folderURL(folder.path())}) {
        ASSERT_TRUE(SecureURL::save(saved, key));
        const auto one = SecureURL::fromSettings(key);
        const auto other = SecureURL::fromBookmark(*settings().data(key));
        ASSERT_TRUE(one && other);
        EXPECT_EQ(one->url(), saved);
        EXPECT_EQ(other->url(), saved);
        EXPECT_NE(*one, *other);
    }
}

TEST_F(SecureURLTest, FollowsTheFileAndRenewsTheBookmarkOnce) {
    ASSERT_TRUE(SecureURL::save(fileURL(file), key));
    auto stored = settings().data(key);
    for (const auto* place : {"file", "renamed", "renamed"}) {
        const bool isMoved = !fs::exists(folder / place);
        if (isMoved)
            fs::rename(file, folder / place);
        const auto found = SecureURL::fromSettings(key);
        ASSERT_TRUE(found) << place;
        EXPECT_EQ(found->url(), fileURL(folder / place));
        EXPECT_EQ(std::exchange(stored, settings().data(key)) != settings().data(key), isMoved);
    }
}

TEST_F(SecureURLTest, RemovesWhatIsNoDataAndKeepsWhatMayBeFoundLater) {
    EXPECT_FALSE(SecureURL::fromSettings(key));
    for (const PropertyList& value : {PropertyList(std::string("text")), PropertyList(true),
                                      PropertyList(PropertyList::Array{PropertyList::Data()})}) {
        settings().set(key, value);
        EXPECT_FALSE(SecureURL::fromSettings(key));
        EXPECT_FALSE(settings().object(key));
    }
    ASSERT_TRUE(SecureURL::save(fileURL(file), key));
    const auto ofNothing = *settings().data(key);
    fs::remove(file);
    for (const auto& data : {PropertyList::Data{}, PropertyList::Data(100), ofNothing}) {
        settings().set(key, data);
        EXPECT_FALSE(SecureURL::fromSettings(key));
        EXPECT_EQ(settings().data(key), data);
        EXPECT_FALSE(SecureURL::fromBookmark(data));
        EXPECT_FALSE(SecureURL::save(fileURL(file), key)) << "there is no file any more";
        EXPECT_EQ(settings().data(key), data);
    }
}

} // namespace
