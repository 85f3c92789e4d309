#include "Tests/Support/Testing.h"
#include "Vesper_Pro_Agent/NotificationDelegate.h"

using namespace Vesper_Pro_Agent;

TEST(NotificationDelegate, LinksToPathsOfAnyLengthThatAreText) {
    EXPECT_FALSE(jobLink("/latin\xE9")) << "not UTF-8";
    EXPECT_FALSE(jobLink("/\xED\xA0\x80")) << "a surrogate";
    ASSERT_TRUE(jobLink(std::string(4095, '/')));
    EXPECT_TRUE(jobLink(std::string(4095, '/'))->absoluteString().ends_with("Ly8v"));
}
