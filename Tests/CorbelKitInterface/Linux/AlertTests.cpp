// Alerts, on a desktop.

#include "Tests/CorbelKitInterface/Linux/WindowTest.h"

namespace {

using Alerts = WindowTest;

TEST_F(Alerts, ShowAnAlertFromAnyThreadUntilItIsDismissed) {
    start();
    for (const auto* const command : {"alert", "alertElsewhere"}) {
        for (const auto* const key : {"Return", "Escape"}) {
            SCOPED_TRACE(std::string(command) + ", " + key);
            order(command + std::string(" One"));
            ASSERT_TRUE(opens());
            press(key);
            EXPECT_EQ(trial->readLine(), "dismissed One");
            EXPECT_TRUE(closes());
        }
    }
}

// What is asked for three times is dismissed once; another one, and a window that nobody could use
// below it, wait.
TEST_F(Alerts, ComeAfterTheAlertsThatAreUpEachOnce) {
    start();
    for (const auto* const command :
         {"alertElsewhere One", "helper", "alertElsewhere One", "helper", "helper"})
        order(command);
    EXPECT_EQ(ask("show"), "shown");
    const auto title = [this] { return run({"xdotool", "getwindowname", window()}); };
    const std::string helper =
        "Die Verbindung zum Hilfsprogramm konnte nicht hergestellt werden.\n";
    std::vector<std::string> seen;
    for (int alert = 0; alert < 2; ++alert) {
        ASSERT_TRUE(opens());
        EXPECT_EQ(ask("windows").substr(0, 1), "1");
        seen.push_back(title());
        press("Return");
        for (int asked = 0; asked < (seen.back() == helper ? 3 : 2); ++asked)
            EXPECT_EQ(trial->readLine(), seen.back() == helper ? "dismissed" : "dismissed One");
        EXPECT_TRUE(waitUntil([&] { return title() != seen.back(); }));
    }
    EXPECT_THAT(seen, testing::UnorderedElementsAre("One\n", helper));
    ASSERT_TRUE(opens());
    EXPECT_EQ(title(), "Window Trial\n");
    press("Return");
    EXPECT_TRUE(closes());
}

// Those that wait for it go on, and the application takes its leave. A busy machine gets more.
TEST_F(Alerts, EndWithTheApplicationWithinASecond) {
    for (const int request : {SIGTERM, SIGINT}) {
        start();
        order("alertElsewhere One");
        ASSERT_TRUE(opens());
        order("alert Two");
        order("alertElsewhere Three");
        ASSERT_TRUE(waitUntil([this] { return ask("windows") == "2 of 2"; }));
        const auto asked = std::chrono::steady_clock::now();
        trial->send(request);
        std::string lines;
        for (const auto* const end = "dismissed too late\n"; !lines.ends_with(end);) {
            const auto line = trial->readLine();
            ASSERT_NE(line, "") << lines;
            lines += line + '\n';
        }
        EXPECT_LT(std::chrono::steady_clock::now() - asked, std::chrono::seconds(2));
        lines += trial->readAll(); // what a sanitizer has to do yet takes longer
        for (const auto* const message : {"One", "Two", "Three"})
            EXPECT_THAT(lines, testing::HasSubstr("dismissed " + std::string(message)));
    }
}

TEST_F(Alerts, LeaveAlertsToTheTerminalWhereThereIsNoDisplay) {
    environment.front() = "DISPLAY=";
    start();
    EXPECT_EQ(ask("alert One"), "dismissed One");
    EXPECT_EQ(ask("alertElsewhere Two"), "dismissed Two");
    EXPECT_EQ(ask("show"), "shown");
}

} // namespace
