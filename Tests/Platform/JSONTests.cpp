#include "Platform/JSON.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using Platform::PropertyList;
namespace JSON = Platform::JSON;

namespace {

std::optional<PropertyList> read(const std::string& text) {
    return JSON::read(std::as_bytes(std::span(text)));
}

TEST(JSON, ReadsEveryKindOfValueAndWritesItAgain) {
    const std::string text = R"({"a":[null,true,-1,18446744073709551615,0.5,"ä\"\n"],"b":{}})";
    const PropertyList value(PropertyList::Dictionary{
        {"a", PropertyList::Array{PropertyList::Null(), true, std::int64_t{-1}, UINT64_MAX, 0.5,
                                  std::string("ä\"\n")}},
        {"b", PropertyList::Dictionary()}});
    EXPECT_EQ(read(text), value);
    const auto bytes = JSON::write(value);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes->data()), bytes->size()), text);
}

TEST(JSON, RefusesWhatIsNoneAndStaysWithinItsBounds) {
    const auto nested = [](std::size_t depth) {
        return std::string(depth, '[') + std::string(depth, ']');
    };
    for (const std::string text :
         {"", "[", "[1,]", "{\"a\" 1}", "nul", "\"\xff\"", "[1] 2", "NaN", "{\"a\":1}}", "'a'"})
        EXPECT_FALSE(read(text)) << text;
    EXPECT_TRUE(read(nested(512)));
    EXPECT_FALSE(read(nested(513)));
    EXPECT_FALSE(read(std::string(1'000'000, '[')));

    PropertyList deep;
    for (int depth = 0; depth < 513; ++depth)
        deep = PropertyList::Array{deep};
    for (const auto& value : {deep, PropertyList(NAN), PropertyList(PropertyList::Data()),
                              PropertyList(PropertyList::Date()), PropertyList(PropertyList::UID()),
                              PropertyList(std::string("\xff"))})
        EXPECT_FALSE(JSON::write(value));
}

} // namespace
