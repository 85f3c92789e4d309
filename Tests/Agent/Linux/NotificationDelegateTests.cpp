#include "Platform/Application.h"
#include "Platform/DispatchQueue.h"
#include "Platform/Linux/ActivationToken.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/WaitUntil.h"
#include "Vesper_Pro_Agent/NotificationDelegate.h"

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace Vesper_Pro_Agent;
using Platform::DispatchQueue;
using TestSupport::EnvironmentVariable;
namespace fs = std::filesystem;

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator(file), {}};
}

TEST(NotificationDelegate, LinksCarryThePathInTheStandardAlphabetUnescaped) {
    struct Case {
        const char* path;
        const char* link;
    };

    const Case cases[] = {
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

/// The desktop as an installed main application sees it: what it is started with is written down.
class InstalledApplication {
public:
    InstalledApplication() {
        fs::create_directories(folder_ / "applications");
        TestSupport::writeFile(script_, "#!/bin/sh\n"
                                        "{ echo \"$#\" \"$1\" \"$XDG_ACTIVATION_TOKEN\"\n"
                                        "  echo \"$DESKTOP_STARTUP_ID\" \"$NOTIFY_SOCKET\"\n"
                                        "  sed -n 's/^SigIgn:[[:space:]]*//p' /proc/$$/status\n"
                                        "  ls /proc/$$/fd >\"$0.fd\"\n" // a pipe would be counted
                                        "  grep -c '^[3-9]$' \"$0.fd\"\n"
                                        "} >\"$0.tmp\"\nmv \"$0.tmp\" \"$0.$#\"\n");
        fs::permissions(script_, fs::perms::owner_all);
        TestSupport::writeFile(
            folder_ / "applications/com.tarnwell.VesperPro10.desktop",
            "[Desktop Entry]\nType=Application\nName=Vesper Pro\nExec=" + script_.string() +
                " %u\n" + "MimeType=x-scheme-handler/vesperpro10joburl;\n");
        TestSupport::writeFile(folder_ / "mimeapps.list",
                               "[Default Applications]\nx-scheme-handler/vesperpro10joburl="
                               "com.tarnwell.VesperPro10.desktop\n");
    }

    /// What the application was started with, with this number of arguments; empty before.
    std::string start(int argumentCount) const {
        return contentOf(script_.string() + "." + std::to_string(argumentCount));
    }

private:
    const TestSupport::TemporaryFolder folder_;
    const fs::path script_ = folder_ / "application";
    const EnvironmentVariable data_{"XDG_DATA_HOME", folder_.path().string()};
    const EnvironmentVariable settings_{"XDG_CONFIG_HOME", folder_.path().string()};
    const EnvironmentVariable bus_{"DBUS_SESSION_BUS_ADDRESS", "disabled:"};
    const EnvironmentVariable socket_{"NOTIFY_SOCKET", "/the/agent's/own"};
};

/// Answers as the user would, waits for the applications that this starts, and quits.
class Answering final : public Platform::ApplicationDelegate {
public:
    Answering(const InstalledApplication& application, std::atomic<int>& completions)
        : application_(application)
        , completions_(completions) {}

    void applicationDidFinishLaunching() override {
        DispatchQueue::concurrent("test.answers").async([this] {
            Platform::setActivationToken("token-1");
            answer("ShowAction", "/x/~~~???");
            TestSupport::waitUntil([this] { return !application_.start(1).empty(); });
            answer("ShowAction", "");
            TestSupport::waitUntil([this] { return !application_.start(0).empty(); });
            answer("ShowAction", "/latin\xE9");
            answer("showaction", "/a");
            answer(Platform::NotificationResponse::defaultActionIdentifier, "/a");
            TestSupport::waitUntil([this] { return completions_ >= 5; });
            kill(getpid(), SIGTERM);
        });
    }

    void applicationWillTerminate() override {}

private:
    void answer(std::string_view action, const std::string& identifier) {
        const Platform::NotificationResponse response{
            .actionIdentifier = std::string(action),
            .request = {.identifier = identifier, .content = {}, .trigger = {}}};
        delegate_.userNotificationCenterDidReceiveNotificationResponseWithCompletionHandler(
            Platform::UserNotificationCenter::current(), response, [this] { ++completions_; });
    }

    NotificationDelegate delegate_;
    const InstalledApplication& application_;
    std::atomic<int>& completions_;
};

TEST(NotificationDelegate, ShowOpensTheExactLinkOrTheApplicationAndNothingElseDoes) {
    const InstalledApplication application;
    std::atomic<int> completions = 0;
    Platform::Application::run(
        0, nullptr, [&] { return std::make_unique<Answering>(application, completions); });
    EXPECT_EQ(completions, 5);
    const std::string noSignalIgnoredNoDescriptor = "0000000000000000\n0\n";
    EXPECT_EQ(application.start(1), "1 vesperpro10joburl://L3gvfn5+Pz8/ token-1\ntoken-1 \n" +
                                        noSignalIgnoredNoDescriptor);
    EXPECT_EQ(application.start(0), "0  \n \n" + noSignalIgnoredNoDescriptor);
}

} // namespace
