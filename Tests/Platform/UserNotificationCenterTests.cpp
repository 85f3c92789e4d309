#include "Platform/DispatchQueue.h"
#include "Platform/UserNotificationCenter.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/WaitUntil.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace Platform;
using namespace std::chrono_literals;
using TestSupport::waitUntil;

UserNotificationCenter& center() {
    return UserNotificationCenter::current();
}

class UserNotificationCenterTest : public ::testing::Test {
protected:
    void add(const std::string& identifier, const std::string& body,
             std::chrono::milliseconds delay) {
        center().add({.identifier = identifier,
                      .content = {.title = "Title",
                                  .subtitle = "",
                                  .body = body,
                                  .categoryIdentifier = "Category"},
                      .trigger = TimeIntervalNotificationTrigger{delay}},
                     [this](const std::optional<Error>& error) {
                         if (!error)
                             ++taken;
                     });
    }

    std::atomic<int> taken = 0;
};

// Sends what is written to standard output to a file for a while.
class StandardOutputFile {
public:
    explicit StandardOutputFile(const std::filesystem::path& path)
        : path_(path) {
        const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
        dup2(file, STDOUT_FILENO);
        close(file);
    }

    ~StandardOutputFile() {
        dup2(saved_, STDOUT_FILENO);
        close(saved_);
    }

    StandardOutputFile(const StandardOutputFile&) = delete;
    StandardOutputFile& operator=(const StandardOutputFile&) = delete;
    StandardOutputFile(StandardOutputFile&&) = delete;
    StandardOutputFile& operator=(StandardOutputFile&&) = delete;

    std::multiset<std::string> lines() const {
        std::multiset<std::string> lines;
        std::ifstream file(path_);
        for (std::string line; std::getline(file, line);)
            lines.insert(line);
        return lines;
    }

private:
    std::filesystem::path path_;
    int saved_ = dup(STDOUT_FILENO);
};

TEST_F(UserNotificationCenterTest, DeliversALineEachAndReplacesWhatStillWaits) {
    const TestSupport::TemporaryFolder folder;
    const StandardOutputFile output(folder / "output");
    add("same", "first", 200ms);
    add("same", "second\nline", 200ms);
    add("", "third", 200ms);
    add("", "fourth", 0ms); // sooner than the one it replaces
    add("other", "fifth", 0ms);
    add("last", "end", 400ms);
    ASSERT_TRUE(waitUntil([&] { return taken == 6; }));
    ASSERT_TRUE(waitUntil([&] { return output.lines().contains("Title \u2014 end"); }));
    EXPECT_EQ(output.lines(),
              (std::multiset<std::string>{"Title \u2014 fifth", "Title \u2014 fourth",
                                          "Title \u2014 second line", "Title \u2014 end"}));
}

TEST_F(UserNotificationCenterTest, RegisteringCategoriesReplacesThoseBefore) {
    center().setNotificationCategories(
        {{.identifier = "A", .actions = {}, .intentIdentifiers = {}},
         {.identifier = "B", .actions = {}, .intentIdentifiers = {}}});
    center().setNotificationCategories(
        {{.identifier = "C", .actions = {{"Act", "Do"}}, .intentIdentifiers = {}}});
    std::atomic<bool> done = false;
    std::vector<NotificationCategory> registered;
    center().getNotificationCategories([&](std::vector<NotificationCategory> categories) {
        registered = std::move(categories);
        done = true;
    });
    ASSERT_TRUE(waitUntil([&] { return done.load(); }));
    ASSERT_EQ(registered.size(), 1U);
    EXPECT_EQ(registered[0].identifier, "C");
    ASSERT_EQ(registered[0].actions.size(), 1U);
    EXPECT_EQ(registered[0].actions[0].title, "Do");
}

TEST_F(UserNotificationCenterTest, AnswersAwayFromTheCallersThread) {
    std::atomic<int> answers = 0;
    const auto caller = std::this_thread::get_id();
    center().requestAuthorization(
        AuthorizationOptions::alert, [&](bool granted, const auto& error) {
            answers += granted && !error && std::this_thread::get_id() != caller ? 1 : 0;
        });
    center().getNotificationSettings([&](NotificationSettings settings) {
        answers += settings.authorizationStatus == AuthorizationStatus::authorized &&
                           settings.alertSetting == NotificationSetting::enabled
                       ? 1
                       : 0;
    });
    EXPECT_TRUE(waitUntil([&] { return answers == 2; }));
}

} // namespace
