#include "Tests/Support/Testing.h"
#include "Vesper_Pro_Agent/NotificationDelegate.h"

using namespace Vesper_Pro_Agent;
using TestSupport::EnvironmentVariable;

TEST(NotificationDelegate, LinksCarryThePathInTheStandardAlphabetUnescaped) {
    const std::pair<const char*, const char*> cases[] = {
        {"/x/~~~???", "vesperpro10joburl://L3gvfn5+Pz8/"},
        {"/\u00FF", "vesperpro10joburl://L8O/"},
        {"/a", "vesperpro10joburl://L2E="},
        {"/", "vesperpro10joburl://Lw=="},
    };
    for (const auto& [path, link] : cases) {
        const auto url = jobLink(path);
        ASSERT_TRUE(url) << path;
        EXPECT_EQ(url->absoluteString(), link);
    }
    EXPECT_FALSE(jobLink("/latin\xE9")) << "not UTF-8";
    EXPECT_FALSE(jobLink("/\xED\xA0\x80")) << "a surrogate";
    ASSERT_TRUE(jobLink(std::string(4095, '/')));
    EXPECT_TRUE(jobLink(std::string(4095, '/'))->absoluteString().ends_with("Ly8v"));
}
