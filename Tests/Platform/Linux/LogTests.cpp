#include "Platform/Log.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string& nameInLog() {
    static std::string name;
    return name;
}

} // namespace

// In place of the C library's.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" void openlog(const char* identifier, int /*options*/, int /*facility*/) {
    nameInLog() = identifier;
}

TEST(Log, IsKeptUnderTheProgramsOwnName) {
    Platform::log("A line of a test");
    EXPECT_EQ(nameInLog(), "platformtests");
}
