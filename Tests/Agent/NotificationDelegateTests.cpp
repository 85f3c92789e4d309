#include "Tests/Support/Testing.h"
#include "Vesper_Pro_Agent/NotificationDelegate.h"

using namespace Vesper_Pro_Agent;

TEST(NotificationDelegate, LinksToPathsOfAnyLengthAndBytes) {
    EXPECT_EQ(jobLink("/latin\xE9").value().absoluteString(), "vesperpro10joburl://L2xhdGlu6Q==");
    ASSERT_TRUE(jobLink(std::string(4095, '/')));
    EXPECT_TRUE(jobLink(std::string(4095, '/'))->absoluteString().ends_with("Ly8v"));
}
