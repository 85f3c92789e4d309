#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/WaitUntil.h"
#include "Vesper_Pro_Agent/NotificationDelegate.h"

#include <gtest/gtest.h>

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

// Nothing is installed here that could be opened.
TEST(NotificationDelegate, CompletesEachAnswerOnceWhateverItLeadsTo) {
    const TestSupport::TemporaryFolder nothing;
    const EnvironmentVariable home("XDG_DATA_HOME", nothing.path().string());
    const EnvironmentVariable system("XDG_DATA_DIRS", nothing.path().string());
    const std::pair<std::string_view, const char*> answers[] = {
        {"ShowAction", ""},
        {"ShowAction", "/latin\xE9"},
        {"showaction", "/a"},
        {Platform::NotificationResponse::defaultActionIdentifier, "/a"},
    };
    NotificationDelegate delegate;
    std::atomic<int> completions = 0;
    for (const auto& [action, identifier] : answers) {
        delegate.userNotificationCenterDidReceiveNotificationResponseWithCompletionHandler(
            Platform::UserNotificationCenter::current(),
            {.actionIdentifier = std::string(action),
             .request = {.identifier = identifier, .content = {}, .trigger = {}}},
            [&completions] { ++completions; });
    }
    TestSupport::waitUntil([&] { return completions >= std::ssize(answers); });
    EXPECT_EQ(completions, std::ssize(answers));
}
