#include "Platform/Log.h"

#include <gtest/gtest.h>

#include <string>

TEST(Log, NeverTakesTheMessageForAFormat) {
    // "%n" writes into memory, so this one would not come back.
    Platform::log("%n%n%n%n%s%s%s%s");
    Platform::log(std::string(100'000, '%'));
    Platform::log(std::string_view("not terminated by a NUL").substr(0, 3));
}
