#include "CorbelKit/Coding/JSONCoder.h"
#include "CorbelKit/Coding/PropertyListCoder.h"
#include "CorbelKit/Formats/DropItem.h"
#include "CorbelKit/Formats/Octal.h"
#include "CorbelKit/Formats/RangeIntegerStyle.h"
#include "Tests/Support/Testing.h"

using namespace CorbelKit;
using namespace std::string_view_literals;

namespace {

using TestSupport::bytesOf;

std::string jsonOf(const auto& value) {
    const auto bytes = JSONEncoder().encode(value);
    return bytes ? TestSupport::textOf(*bytes) : bytes.error().description();
}

TEST(Octal, ReadsIntegersOfDigitsAndOneSignAlone) {
    for (const auto& [text, value] : {std::pair("755", INT64_C(493)),
                                      {"-17", -15},
                                      {"+17", 15},
                                      {"0", 0},
                                      {"-0", 0},
                                      {"777777777777777777777", INT64_MAX},
                                      {"-1000000000000000000000", INT64_MIN}}) {
        EXPECT_EQ(Octal::integer(text), value) << text;
        EXPECT_EQ(Octal::integer(Octal::string(value)), value);
    }
    for (const auto text : {"19"sv, "+"sv, "-"sv, ""sv, "+-1"sv, "--1"sv, " 7"sv, "7 "sv, "0x7"sv,
                            "7\0"sv, "1000000000000000000000"sv, "-1000000000000000000001"sv})
        EXPECT_FALSE(Octal::integer(text)) << text;
}

TEST(Octal, SaysWhatAValueGrants) {
    using enum Octal::Mode;

    const std::tuple<std::string_view, Octal::Mode, std::string_view> cases[] = {
        {"755", permission, "u=rwx,g=r-x,o=r-x 755"},  {"022", mask, "u=rwx,g=r-x,o=r-x 022"},
        {"1246", permission, "u=-w-,g=r--,o=rw- 246"}, {"3", mask, "u=rwx,g=rwx,o=r-- 003"},
        {"8", permission, "u=---,g=---,o=--- 008"},    {"9é7", mask, "u=rwx,g=rwx,o=--- 9é7"},
        {"éüß1", permission, "u=---,g=---,o=--x üß1"}, {"", mask, "u=rwx,g=rwx,o=rwx 000"},
    };

    for (const auto& [octal, mode, symbolic] : cases)
        EXPECT_EQ(Octal::symbolic(octal, mode), symbolic);
}

TEST(RangeIntegerStyle, ClampsWhatItShowsAndParsesAnything) {
    const RangeIntegerStyle style{.parseStrategy = {},
                                  .range = {.lowerBound = -1, .upperBound = 100}};
    for (const auto& [value, text] :
         {std::pair(INT64_MIN, "-1"), {-1, "-1"}, {42, "42"}, {100, "100"}, {INT64_MAX, "100"}})
        EXPECT_EQ(style.locale("ar").format(value), text);
    for (const auto& [text, value] : {std::pair("+7", INT64_C(7)),
                                      {"-12", -12},
                                      {"007", 7},
                                      {"9223372036854775807", INT64_MAX},
                                      {"-9223372036854775808", INT64_MIN}})
        EXPECT_EQ(RangeIntegerStrategy::parse(text), value) << text;
    for (const auto text : {"abc"sv, ""sv, " 5"sv, "5 "sv, "+"sv, "+-5"sv, "1,000"sv, "٣"sv,
                            "5\0"sv, "9223372036854775808"sv})
        EXPECT_EQ(RangeIntegerStrategy::parse(text), 0) << text;
}

TEST(RangeIntegerStyle, KeepsItsRangeAndStrategyInItsCodedForm) {
    const RangeIntegerStyle style{.parseStrategy = {},
                                  .range = {.lowerBound = INT64_MIN, .upperBound = 9}};
    const auto text = jsonOf(style);
    EXPECT_EQ(text, R"({"parseStrategy":{},"range":[-9223372036854775808,9]})");
    EXPECT_EQ(*JSONDecoder().decode<RangeIntegerStyle>(bytesOf(text)), style);
    for (const auto* broken :
         {R"({"parseStrategy":{},"range":[2,1]})", R"({"parseStrategy":{},"range":[1]})",
          R"({"parseStrategy":[],"range":[1,2]})", R"({"range":[1,2]})"})
        EXPECT_FALSE(JSONDecoder().decode<RangeIntegerStyle>(bytesOf(broken))) << broken;
}

TEST(DropItem, IsCodedUnderTheNameOfItsCase) {
    const std::pair<DropItem, const char*> cases[] = {
        {{}, R"({"none":{}})"},
        {{std::string("ä\n")}, R"({"text":{"_0":"ä\n"}})"},
        {{*Platform::URL::parse("https://example.org/a%20b")},
         R"({"url":{"_0":"https://example.org/a%20b"}})"},
    };
    for (const auto& [item, json] : cases) {
        EXPECT_EQ(jsonOf(item), json);
        EXPECT_EQ(*JSONDecoder().decode<DropItem>(bytesOf(json)), item) << json;
    }
    EXPECT_EQ(*JSONDecoder().decode<DropItem>(bytesOf(R"({"text":{"_0":"a"},"image":{}})")),
              DropItem{std::string("a")});
    EXPECT_EQ(*PropertyListDecoder::shared().decode<DropItem>(bytesOf(
                  R"({url={"_0"={relative="../b";base={relative="https://a.org/a/";};};};})")),
              DropItem{*Platform::URL::parse("https://a.org/b")});
}

TEST(DropItem, SaysWhatIsWrongWithItsCodedForm) {
    constexpr auto wrongNumber = "items[0]: Invalid number of keys found, expected one.";
    const std::pair<const char*, const char*> cases[] = {
        {R"({"text":{"_0":"a"},"url":{"_0":"b:"}})", wrongNumber},
        {R"({"none":{},"text":{"_0":"a"}})", wrongNumber},
        {"{}", wrongNumber},
        {R"({"image":{}})", wrongNumber},
        {R"({"text":{}})", "items[0].text: No value associated with key \"_0\"."},
        {R"({"url":{"_0":"no url"}})", "items[0].url._0: Invalid URL string."},
        {"[]", "items[0]: Expected to decode Dictionary but found an array instead."},
    };
    for (const auto& [json, description] : cases) {
        using Items = std::map<std::string, std::vector<DropItem>, std::less<>>;
        const auto items =
            JSONDecoder().decode<Items>(bytesOf(R"({"items":[)" + std::string(json) + "]}"));
        ASSERT_FALSE(items) << json;
        EXPECT_EQ(items.error().description(), description);
        EXPECT_TRUE(description != wrongNumber ||
                    items.error().kind == CodingError::Kind::typeMismatch);
    }
}

} // namespace
