#include "Platform/JSON.h"
#include "Tests/Support/Testing.h"

#include <cmath>

using namespace std::string_literals;
using namespace TestSupport;
using Platform::PropertyList;
namespace JSON = Platform::JSON;

TEST(JSON, KeepsEachValueItsTypeAndEachKeyItsPlace) {
    const PropertyList value(
        PropertyList::Dictionary{{"Z", 1.0},
                                 {"a", std::int64_t{1'000'000'000'000'000'001}},
                                 {"a10", PropertyList::Array{true, false}},
                                 {"a9", 0.1},
                                 {"b\0"s, UINT64_MAX},
                                 {"\u00E9", -0.0},
                                 {"\uFEFFx", "/\\\"\x1F\uFEFF"}});
    const auto written = JSON::write(value);
    ASSERT_TRUE(written);
    EXPECT_EQ(textOf(*written), R"({"Z":1.0,"a":1000000000000000001,"a10":[true,false],"a9":0.1,)"
                                R"("b\u0000":18446744073709551615,"é":-0.0,)"
                                "\"\uFEFFx\":\"/\\\\\\\"\\u001f\uFEFF\"}");
    EXPECT_EQ(JSON::read(*written), value);
}

TEST(JSON, IsReadInUTF8AloneWithAByteOrderMarkOrWithout) {
    for (const auto& text : {"[1]"s, "\xEF\xBB\xBF[1]"s, " \n[1]\t"s})
        EXPECT_EQ(JSON::read(bytesOf(text)), PropertyList(PropertyList::Array{1})) << text;
    for (const auto& text : {"\xEF\xBB\xBF"s, "[\0001\0]\0"s, "\xFF\xFE[\0]\0"s, "\0[\0]"s,
                             "\xFE\xFF\0[\0]"s, "\0\0\0001"s, "1\0\0\0"s})
        EXPECT_FALSE(JSON::read(bytesOf(text))) << testing::PrintToString(text);
}

TEST(JSON, RefusesWhatIsNoneAndStaysWithinItsBounds) {
    const auto nested = [](std::size_t depth) {
        return std::string(depth, '[') + std::string(depth, ']');
    };
    EXPECT_TRUE(JSON::read(bytesOf(nested(512))));
    for (const std::string& text : {std::string(), nested(513), std::string(1'000'000, '[')})
        EXPECT_FALSE(JSON::read(bytesOf(text))) << text.size();
    for (const auto* text :
         {"[", "[1,]", "{\"a\" 1}", "nul", "\"\xff\"", "[1] 2", "NaN", "{\"a\":1}}", "'a'"})
        EXPECT_FALSE(JSON::read(bytesOf(text))) << text;

    PropertyList deep;
    for (int depth = 0; depth < 513; ++depth)
        deep = PropertyList::Array{deep};
    for (const auto& value : {deep, PropertyList(NAN), PropertyList(PropertyList::Data()),
                              PropertyList(PropertyList::Date()), PropertyList(PropertyList::UID()),
                              PropertyList(std::string("\xff"))})
        EXPECT_FALSE(JSON::write(value));
}
