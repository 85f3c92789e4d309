#include "Platform/JSON.h"
#include "Tests/Support/Testing.h"

#include <cmath>

using namespace TestSupport;
using Platform::PropertyList;
namespace JSON = Platform::JSON;

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
