#include "CorbelKit/Formats/StringEncoding.h"
#include "Platform/TextServices.h"
#include "Tests/Support/Testing.h"

namespace TextServices = Platform::TextServices;

namespace {

using namespace std::string_literals;

std::int64_t guess(const std::string& text) {
    return CorbelKit::guessEncoding(TestSupport::bytesOf(text));
}

const auto mark = "\xEF\xBB\xBF"s;
constexpr std::int64_t latin1 = 5;
constexpr std::int64_t utf8 = TextServices::utf8Encoding;

TEST(StringEncoding, GuessesWhatTheTextClaims) {
    const std::pair<std::string, std::int64_t> cases[] = {
        {R"(<meta content="text/html; charset=utf-8">)", utf8},
        {"charset=iso-8859-1;charset=utf-8", latin1},
        {"<meta charset=ISO-8859-1>", latin1},
        {"Content-Type: text/plain; charset=iso-8859-1", latin1},
        {R"(<?xml version="1.0" encoding="ISO-8859-1"?>)", latin1},
        {R"(<?xml encoding=""ISO-8859-1?>)", latin1},
        {"encoding=\xC3\xA9ISO-8859-1", latin1}, // skipped as a whole, ends with the text
        {R"(<?xml encoding="ISO-8859-1"?><meta charset=utf-8>)", utf8},
        {mark + "123456789", utf8},
        {"charset=l1", latin1},
        {"😀😀 charset=l1", latin1},
        {mark + "😀😀😀😀.", utf8},
    };

    for (const auto& [text, expected] : cases)
        EXPECT_EQ(guess(text), expected) << text.substr(0, 80);
}

TEST(StringEncoding, GuessesNothingFromWhatIsNoClaimOrNoText) {
    const std::string texts[] = {"",
                                 "@charset=iso-8859-1\n;",
                                 "<meta charset=\"utf-8\">",
                                 "0123456789charset=",
                                 "0123456789charset=klingon ",
                                 "Charset=utf-8 CHARSET=utf-8",
                                 "<?xml encoding=\"ISO-8859-1\" standalone=\"yes\"?>",
                                 "<?xml encoding='ISO-8859-1'?>",
                                 "<?xml encoding=\"ISO-8859-1\"?>0123456789charset=",
                                 "0123456789encoding=",
                                 "0123456789encoding=\"\"?>",
                                 "nothing is claimed",
                                 "\xFF\xFE 0123456789",
                                 "charset=utf-8 \xC3",
                                 mark + "12345678",
                                 mark + "😀😀😀😀",
                                 "0123456789charset=utf-8\0>"s,
                                 std::string(20, '\0'),
                                 "charset=" + std::string(10'000, 'x'),
                                 "charset=" + std::string(10'000, '-') + "utf-8 "};
    for (const auto& text : texts)
        EXPECT_EQ(guess(text), 0) << text.substr(0, 80);
}

// Wherever the seams between the parts lie in which a text is read, nothing is lost in them.
TEST(StringEncoding, FindsAndRefusesAcrossAnySeam) {
    for (std::size_t length = 0; length < 33'000; length += length % 4096 < 4066 ? 4066 : 1) {
        const std::string before(length, ' ');
        EXPECT_EQ(guess(before + "€charset=l1 😀"), latin1) << length;
        EXPECT_EQ(guess(before + "charset=l1 \xE2\x82" + before), 0) << length;
        EXPECT_EQ(guess(before + "charset=l1 \x80\x80\x80\x80" + before), 0) << length;
        EXPECT_EQ(guess(before + " encoding='l1?> charset=ascii;" + before), 1) << length;
    }
}

} // namespace
