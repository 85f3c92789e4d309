#include "CorbelKit/Formats/LineEnding.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <random>
#include <vector>

using CorbelKit::converted;
using CorbelKit::LineEnding;

namespace {

using namespace std::string_literals;

/// Every form of a text that there is.
std::vector<std::string> forms(const std::string& text) {
    return {converted(text, LineEnding::unix), converted(text, LineEnding::windows),
            converted(text, LineEnding::macOS9), CorbelKit::showingPilcrows(text),
            CorbelKit::withoutLineBreaks(text)};
}

// Of texts, the peer below knows better.
TEST(LineEnding, TakesBytesThatAreNoTextAsTheyAre) {
    EXPECT_EQ(forms("\xFF\r\n\xC2"),
              (std::vector<std::string>{"\xFF\n\xC2", "\xFF\r\n\xC2", "\xFF\r\xC2", "\xFF¶¶\xC2",
                                        "\xFF\xC2"}));
    EXPECT_EQ(forms(""), std::vector<std::string>(5));
}

TEST(LineEnding, HandsBackTheTextItselfWhereNothingIsToBeDone) {
    const std::string line(200, 'x');
    for (const auto& [target, ending] :
         {std::pair(LineEnding::unix, "\n"), std::pair(LineEnding::windows, "\r\n"),
          std::pair(LineEnding::macOS9, "\r")}) {
        auto text = line + ending + line + ending;
        const auto* const bytes = text.data();
        EXPECT_EQ(converted(std::move(text), target).data(), bytes) << ending;
    }
}

std::string randomText(std::mt19937& random) {
    static const std::vector<std::string> pieces{
        "\r", "\n", "\r\n", "a", "é", "¶", "\0"s, "😀", std::string(150, 'x')};
    std::string text;
    for (auto length = random() % 40; length > 0; --length)
        text += pieces[random() % pieces.size()];
    return text;
}

void writeHexadecimal(std::ostream& output, const std::string& text) {
    constexpr std::string_view digits = "0123456789abcdef";
    for (const auto character : text) {
        const auto byte = static_cast<unsigned char>(character);
        output << digits[byte >> 4U] << digits[byte & 15U];
    }
    output << '\n';
}

// The peer makes the replacements one after the other, each in the whole text.
TEST(LineEndingDifferential, AgreesWithReplacementsMadeOneAfterTheOther) {
    const TestSupport::TemporaryFolder folder;
    std::mt19937 random(45);
    std::ofstream file(folder / "forms");
    for (int round = 0; round < 10'000; ++round) {
        const auto text = randomText(random);
        writeHexadecimal(file, text);
        for (const auto& form : forms(text))
            writeHexadecimal(file, form);
    }
    file.close();
    const auto command =
        "python3 '" CORBEL_TEST_DATA "/LineEndingPeer.py' '" + (folder / "forms").string() + "'";
    EXPECT_EQ(std::system(command.c_str()), 0);
}

} // namespace
