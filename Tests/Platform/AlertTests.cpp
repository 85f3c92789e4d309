#include "Platform/AlertPresenter.h"
#include "Platform/MainThread.h"
#include "Tests/Support/EventLog.h"
#include "Tests/Support/MainLoop.h"
#include "Tests/Support/Testing.h"

#include <atomic>
#include <memory>
#include <thread>

using namespace Platform;

namespace {

bool drainUntil(const std::function<bool()>& condition) {
    return TestSupport::waitUntil([&] {
        TestSupport::drainMainLoop();
        return condition();
    });
}

/// Each alert is dismissed by a task of the main thread, which comes to it while the alert is up.
class Alerts : public testing::Test {
protected:
    Alerts() {
        setAlertPresenter({.run = [this](const Alert& alert) { return show(alert.messageText); },
                           .dismissAll = {}});
    }

    ~Alerts() override { setAlertPresenter({}); }

    static Alert alert(const std::string& text) {
        return {.messageText = text, .informativeText = {}, .buttonTitle = {}};
    }

    bool show(const std::string& text) {
        MainThread::check();
        const bool isFirst = ++up == 1;
        const auto isDismissed = std::make_shared<bool>(false); // which a late task outlives
        MainThread::run([isDismissed] { *isDismissed = true; });
        EXPECT_TRUE(drainUntil([&isDismissed] { return *isDismissed; })) << text;
        --up;
        events.add(isFirst ? text : text + " in front");
        return true;
    }

    int up = 0;
    TestSupport::EventLog events;
};

TEST_F(Alerts, OfAnyThreadComeOneAtATimeWhileTheRestGoesOn) {
    std::vector<std::thread> threads;
    std::atomic<int> returned = 0;
    for (const auto* const text : {"One", "Two", "Three"}) {
        threads.emplace_back([text, &returned] {
            runModal(alert(text));
            ++returned;
        });
    }
    EXPECT_TRUE(drainUntil([&returned] { return returned == 3; }));
    for (auto& thread : threads)
        thread.join();
    EXPECT_THAT(events.events(), testing::UnorderedElementsAre("One", "Two", "Three"));
}

TEST_F(Alerts, ShowWhatAWindowCan) {
    const auto longOnes = std::string(5000, 'x');
    for (const auto& text : {"\xFF" + longOnes, longOnes, std::string(100, '\n')})
        runModal(alert(text));
    const auto much = longOnes.substr(0, 1000);
    EXPECT_THAT(events.events(), testing::ElementsAre("\uFFFD" + much.substr(1) + "…", much + "…",
                                                      std::string(25, '\n') + "…"));
}

TEST_F(Alerts, OfTheMainThreadReturnAtOnceAndTheSameOneIsDismissedOnce) {
    for (const auto* const text : {"One", "Two", "One"})
        showAlert(alert(text), [this, text] { events.add(std::string("dismissed ") + text); });
    whenNoAlertIsUp([this] { events.add("empty"); });
    EXPECT_EQ(events.events().size(), 0);
    EXPECT_TRUE(drainUntil([this] { return events.events().size() >= 6; }));
    EXPECT_THAT(events.take(6),
                testing::UnorderedElementsAre("One", "Two", "dismissed One", "dismissed One",
                                              "dismissed Two", "empty"));
}

} // namespace
