// Access is seen from outside here: it is a descriptor of the process.

#include "CorbelKit/Services/SecureURL.h"
#include "Tests/Support/Testing.h"

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
