// Access is seen from outside here: it is a descriptor of the process. And settings are a file,
// which may not be written.

#include "CorbelKit/Services/SecureURL.h"
#include "Tests/Support/Testing.h"

#include <cstdlib>

using namespace TestSupport;

TEST(SecureURLAccess, LastsFromTheMakingOfTheObjectToItsEnd) {
    const TemporaryFolder folder;
    const auto bookmark = *Platform::makeBookmark(folderURL(folder.path()));
    const auto before = openDescriptors();
    auto one = CorbelKit::SecureURL::fromBookmark(bookmark);
    const auto other = CorbelKit::SecureURL::fromBookmark(bookmark);
    EXPECT_EQ(openDescriptors(), before + 2);
    one.reset();
    EXPECT_EQ(openDescriptors(), before + 1);
}

TEST(SecureURLThatCannotBeStored, IsNotSaved) {
    const auto obstacle =
        fs::path(std::getenv("XDG_CONFIG_HOME")) / "tarnwell/.CorbelKitTests.plist.saving";
    fs::create_directories(obstacle);
    const TemporaryFolder folder;
    EXPECT_FALSE(CorbelKit::SecureURL::save(folderURL(folder.path()), "Key"));
    fs::remove(obstacle);
    EXPECT_TRUE(CorbelKit::SecureURL::save(folderURL(folder.path()), "Key"));
}
