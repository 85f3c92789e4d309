#include "Platform/AlertPresenter.h"

#include <gtest/gtest.h>

namespace {

std::string printed(const std::string& message, const std::string& information) {
    testing::internal::CaptureStderr();
    Platform::runModal(
        {.messageText = message, .informativeText = information, .buttonTitle = "OK"});
    return testing::internal::GetCapturedStderr();
}

} // namespace

TEST(Alert, IsOneLineOnStandardErrorWhateverItsTexts) {
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"Not saved", "The disk is full.", "Not saved: The disk is full.\n"},
        {"Not saved", "", "Not saved\n"},
        {"", "Full", "Full\n"},
        {"a\nb", "c\r\x1B[2Jd\x7F", "a b: c  [2Jd \n"},
        {"\u2028\u2029\u0085\u009B\u202E", "\xFF\xC2", "     : \uFFFD\uFFFD\n"},
        {std::string("\0", 1), "\u05D0", " : \u05D0\n"},
    };
    for (const auto& [message, information, line] : cases)
        EXPECT_EQ(printed(message, information), line);
}
