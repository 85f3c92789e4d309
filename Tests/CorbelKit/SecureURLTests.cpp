#include "CorbelKit/Services/SecureURL.h"
#include "Platform/UserDefaults.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace {

using CorbelKit::SecureURL;
using Platform::PropertyList;
using Platform::URL;
namespace fs = std::filesystem;

URL url(const fs::path& path) {
    return URL::file(path.string());
}

class SecureURLTest : public ::testing::Test {
protected:
    SecureURLTest() {
        // The settings of the process stay where they were first asked for.
        static const TestSupport::TemporaryFolder configuration;
        static const TestSupport::EnvironmentVariable variable("XDG_CONFIG_HOME",
                                                               configuration.path().string());
        TestSupport::writeFile(file, "");
    }

    // On some systems the settings outlive the process.
    ~SecureURLTest() override { settings().remove(key); }

    static Platform::UserDefaults& settings() { return Platform::UserDefaults::standard(); }

    static inline const std::string key = "SecureURLTest";
    const TestSupport::TemporaryFolder folder;
    const fs::path file = folder / "file";
};

TEST_F(SecureURLTest, ComesBackFromItsKeyAsAnotherObjectOfTheSameFile) {
    const auto folderURL = URL::file(folder.path().string(), URL::DirectoryHint::isDirectory);
    for (const auto& saved : {url(file), folderURL}) {
        ASSERT_TRUE(SecureURL::save(saved, key));
        const auto one = SecureURL::fromSettings(key);
        const auto other = SecureURL::fromBookmark(*settings().data(key));
        ASSERT_TRUE(one && other);
        EXPECT_EQ(one->url(), saved);
        EXPECT_EQ(other->url(), saved);
        EXPECT_EQ(*one, *one);
        EXPECT_NE(*one, *other);
        EXPECT_NE(std::hash<SecureURL>()(*one), std::hash<SecureURL>()(*other));
    }
}

TEST_F(SecureURLTest, FollowsTheFileAndRenewsTheBookmarkOnce) {
    ASSERT_TRUE(SecureURL::save(url(file), key));
    const auto stored = settings().data(key);
    ASSERT_TRUE(SecureURL::fromSettings(key));
    EXPECT_EQ(settings().data(key), stored); // nothing to renew
    fs::rename(file, folder / "renamed");
    const auto found = SecureURL::fromSettings(key);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->url(), url(folder / "renamed"));
    const auto renewed = settings().data(key);
    EXPECT_NE(renewed, stored);
    ASSERT_TRUE(SecureURL::fromSettings(key));
    EXPECT_EQ(settings().data(key), renewed);
}

TEST_F(SecureURLTest, RemovesWhatIsNoDataAndKeepsWhatMayBeFoundLater) {
    EXPECT_FALSE(SecureURL::fromSettings(key));
    for (const PropertyList& value : {PropertyList(std::string("text")), PropertyList(true),
                                      PropertyList(PropertyList::Array{PropertyList::Data()})}) {
        settings().set(key, value);
        EXPECT_FALSE(SecureURL::fromSettings(key));
        EXPECT_FALSE(settings().object(key));
    }
    ASSERT_TRUE(SecureURL::save(url(file), key));
    const auto ofNothing = *settings().data(key);
    fs::remove(file);
    for (const auto& data : {PropertyList::Data{}, PropertyList::Data(100), ofNothing}) {
        settings().set(key, data);
        EXPECT_FALSE(SecureURL::fromSettings(key));
        EXPECT_FALSE(SecureURL::fromBookmark(data));
        EXPECT_EQ(settings().data(key), data);
    }
}

TEST_F(SecureURLTest, SavesNoBookmarkThatCannotBeMade) {
    settings().set(key, std::string("before"));
    EXPECT_FALSE(SecureURL::save(url(folder / "missing"), key));
    EXPECT_FALSE(SecureURL::save(*URL::parse("https://example.org/"), key));
    EXPECT_EQ(settings().string(key), "before");
}

} // namespace
