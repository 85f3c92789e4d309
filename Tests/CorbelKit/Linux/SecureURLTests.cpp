// Access is seen from outside here: it is a descriptor of the process.

#include "CorbelKit/Services/SecureURL.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

TEST(SecureURLAccess, LastsFromTheMakingOfTheObjectToItsEnd) {
    namespace fs = std::filesystem;
    const TestSupport::TemporaryFolder folder;
    const auto descriptorsOfFolder = [&] {
        const fs::directory_iterator all("/proc/self/fd");
        return std::count_if(begin(all), end(all), [&](const auto& descriptor) {
            std::error_code closed;
            return fs::read_symlink(descriptor, closed) == folder.path();
        });
    };
    const auto bookmark = Platform::makeBookmark(Platform::URL::file(folder.path().string()));
    ASSERT_TRUE(bookmark);
    auto one = CorbelKit::SecureURL::fromBookmark(*bookmark);
    const auto other = CorbelKit::SecureURL::fromBookmark(*bookmark);
    EXPECT_EQ(descriptorsOfFolder(), 2);
    one.reset();
    EXPECT_EQ(descriptorsOfFolder(), 1);
}
