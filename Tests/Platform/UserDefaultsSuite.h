#pragma once

#include "Platform/UserDefaults.h"
#include "Tests/Support/EventLog.h"
#include "Tests/Support/Testing.h"

#include <unistd.h>

/// A suite of settings that no other process uses.
class UserDefaultsTest : public ::testing::Test {
protected:
    using UserDefaults = Platform::UserDefaults;

    static inline const std::string suiteName = "org.example.settings" + std::to_string(getpid());

    // On some systems the settings of a suite outlive the process.
    static void removeAll(const std::vector<std::string>& keys) {
        auto defaults = open();
        for (const auto& key : keys)
            defaults.remove(key);
    }

    static UserDefaults open() { return *UserDefaults::suite(suiteName); }

    TestSupport::TemporaryFolder folder;
    const std::filesystem::path configuration = folder / "above/config";

private:
    TestSupport::EnvironmentVariable variable_{"XDG_CONFIG_HOME", configuration.string()};
};

class UserDefaultsObservation : public UserDefaultsTest {
protected:
    UserDefaults::Observation observe(const std::string& key) {
        return open().observe(key, [this](const auto& keyPath, const auto& value) {
            const auto* text = value ? value->template get<std::string>() : nullptr;
            notified.add(keyPath + ":" + (text != nullptr ? *text : "-"));
        });
    }

    // A file written in place may be seen while it is empty, so other values may come first.
    void expectInTheEnd(const std::string& expected) {
        EXPECT_TRUE(TestSupport::waitUntil([&] {
            const auto events = notified.events();
            return !events.empty() && events.back() == expected;
        })) << expected;
    }

    TestSupport::EventLog notified; // "-" for no value
};
