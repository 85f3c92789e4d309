#pragma once

#include "Platform/UserDefaults.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/WaitUntil.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <mutex>

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
            const std::lock_guard lock(toldMutex);
            told.push_back(keyPath + ":" + (text != nullptr ? *text : "-"));
        });
    }

    void expectTold(const std::vector<std::string>& expected) {
        EXPECT_TRUE(TestSupport::waitUntil([&] {
            const std::lock_guard lock(toldMutex);
            return told.size() >= expected.size();
        }));
        const std::lock_guard lock(toldMutex);
        EXPECT_EQ(std::exchange(told, {}), expected);
    }

    // A file written in place may be seen while it is empty, so other values may come first.
    void expectToldInTheEnd(const std::string& expected) {
        std::string last;
        EXPECT_TRUE(TestSupport::waitUntil([&] {
            const std::lock_guard lock(toldMutex);
            last = told.empty() ? std::string() : told.back();
            return last == expected;
        })) << last;
    }

    std::mutex toldMutex;
    std::vector<std::string> told; // toldMutex; "-" for no value
};
