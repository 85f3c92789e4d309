#include "CorbelKit/Coding/JSONCoder.h"
#include "CorbelKit/Coding/PropertyListCoder.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <string>

using namespace CorbelKit;
using Platform::PropertyList;

namespace {

std::span<const std::byte> bytesOf(std::string_view text) {
    return std::as_bytes(std::span(text));
}

std::string textOf(const std::vector<std::byte>& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

struct Part {
    std::string name;
    std::optional<std::uint8_t> size;

    static Part decode(const Decoder& decoder) {
        const auto container = decoder.container();
        return {.name = container.decode<std::string>("name"),
                .size = container.decodeIfPresent<std::uint8_t>("size")};
    }

    void encode(Encoder& encoder) const {
        auto container = encoder.container();
        container.encode("name", name);
        container.encodeIfPresent("size", size);
    }

    friend bool operator==(const Part&, const Part&) = default;
};

/// A record with a field of every kind.
struct Record {
    bool yes = true;
    std::int64_t least = std::numeric_limits<std::int64_t>::min();
    std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    double real = 0.1;
    std::string text = "aä€😀<&>\n";
    PropertyList::Data data = everyByte();
    PropertyList::Date date = std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) +
                              std::chrono::hours(12) + std::chrono::seconds(30 * 60 + 15);
    Platform::URL url = Platform::URL::file("/a b/");
    std::vector<Part> list = {{"first", {}}, {"second", 7}};
    std::vector<std::optional<int>> optionals = {1, std::nullopt, 3};
    std::map<std::string, int, std::less<>> map = {{"", -1}, {"ключ", 2}};

    static PropertyList::Data everyByte() {
        PropertyList::Data data;
        for (unsigned value = 0; value < 256; ++value)
            data.push_back(static_cast<std::byte>(value));
        return data;
    }

    /// Names each field once, for both directions.
    template <class Self, class Visitor>
    static void visit(Self& self, const Visitor& field) {
        field("yes", self.yes), field("least", self.least), field("most", self.most);
        field("real", self.real), field("text", self.text), field("data", self.data);
        field("date", self.date), field("url", self.url), field("list", self.list);
        field("optionals", self.optionals), field("map", self.map);
    }

    static Record decode(const Decoder& decoder) {
        Record record;
        const auto container = decoder.container();
        visit(record,
              [&]<class T>(const char* key, T& field) { field = container.decode<T>(key); });
        return record;
    }

    void encode(Encoder& encoder) const {
        auto container = encoder.container();
        visit(*this, [&](const char* key, const auto& field) { container.encode(key, field); });
    }

    friend bool operator==(const Record&, const Record&) = default;
};

TEST(Coding, AgreesWithAnotherImplementationOfPropertyListsInBothDirections) {
    const TestSupport::TemporaryFolder folder;
    const Record record;
    const auto write = [&](const char* name, const PropertyListEncoder& encoder) {
        const auto bytes = encoder.encode(record);
        ASSERT_TRUE(bytes) << bytes.error().description();
        TestSupport::writeFile(folder / name, textOf(*bytes));
    };
    write("ours.xml", PropertyListEncoder::xml());
    write("ours.binary", PropertyListEncoder::binary());
    const auto command =
        "python3 '" CORBEL_TEST_DATA "/CoderPeer.py' '" + folder.path().string() + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    for (const auto* name : {"theirs.xml", "theirs.binary"}) {
        const auto content = TestSupport::contentOf(folder / name);
        const auto theirs = PropertyListDecoder::shared().decode<Record>(bytesOf(content));
        ASSERT_TRUE(theirs) << name << ": " << theirs.error().description();
        EXPECT_EQ(*theirs, record) << name;
    }
}

TEST(Coding, TakesTheSameRecordThroughJSON) {
    const auto json = JSONEncoder().encode(Record());
    ASSERT_TRUE(json) << json.error().description();
    const auto text = textOf(*json);
    for (const auto* form : {R"("data":"AAECAw)", R"("date":816957015)",
                             R"("url":"file:///a%20b/")", R"("optionals":[1,null,3])"})
        EXPECT_NE(text.find(form), std::string::npos) << form << " in " << text;
    const auto back = JSONDecoder().decode<Record>(*json);
    ASSERT_TRUE(back) << back.error().description();
    EXPECT_EQ(*back, Record());
}

// The first failure, where it lies, and nothing of what came after it.
TEST(Coding, SaysWhereAndWhyAValueCannotBeDecoded) {
    using Kind = CodingError::Kind;

    const std::tuple<const char*, Kind, const char*> cases[] = {
        {R"([{"name":"a"},{}])", Kind::keyNotFound, "[1]: No value associated with key \"name\"."},
        {R"([{"name":"a"},{"name":5},7])", Kind::typeMismatch,
         "[1].name: Expected to decode String but found a number instead."},
        {R"([{"name":null}])", Kind::valueNotFound,
         "[0].name: Expected String but found null instead."},
        {R"([{"name":"a","size":256}])", Kind::dataCorrupted,
         "[0].size: Parsed number does not fit in UInt8."},
        {R"([{"name":"a","size":true}])", Kind::typeMismatch,
         "[0].size: Expected to decode UInt8 but found a boolean instead."},
        {R"([["name"]])", Kind::typeMismatch,
         "[0]: Expected to decode Dictionary but found an array instead."},
        {R"({})", Kind::typeMismatch, "Expected to decode Array but found a dictionary instead."},
        {R"([{"name":"a"})", Kind::dataCorrupted, "The given data was not valid JSON."},
    };

    for (const auto& [json, kind, description] : cases) {
        const auto parts = JSONDecoder().decode<std::vector<Part>>(bytesOf(json));
        ASSERT_FALSE(parts) << json;
        EXPECT_EQ(parts.error().kind, kind) << json;
        EXPECT_EQ(parts.error().description(), description);
    }
    const auto whole = JSONDecoder().decode<std::vector<Part>>(
        bytesOf(R"([{"name":"a","size":2.55e2,"other":[]},{"name":"b","size":null}])"));
    ASSERT_TRUE(whole) << whole.error().description();
    EXPECT_EQ(*whole, (std::vector<Part>{{"a", 255}, {"b", {}}}));
}

TEST(Coding, ReadsNumbersAtTheirBoundsAndNoneBeyond) {
    const auto numberAs = []<class T>(T, const char* json) {
        const auto number = JSONDecoder().decode<T>(bytesOf(json));
        return number ? std::optional(*number) : std::nullopt;
    };
    EXPECT_EQ(numberAs(std::int64_t(), "-9223372036854775808"), INT64_MIN);
    EXPECT_EQ(numberAs(std::int64_t(), "-9.223372036854775808e18"), INT64_MIN);
    EXPECT_EQ(numberAs(std::uint64_t(), "18446744073709551615"), UINT64_MAX);
    EXPECT_EQ(numberAs(std::int8_t(), "-128"), -128);
    EXPECT_EQ(numberAs(double(), "18446744073709551615"), 0x1p64);
    EXPECT_EQ(numberAs(double(), "3"), 3.0);
    for (const auto* beyond : {"9223372036854775808", "-9.3e18", "1e300", "0.5"})
        EXPECT_FALSE(numberAs(std::int64_t(), beyond)) << beyond;
    for (const auto* beyond : {"18446744073709551616", "-1", "1.5"})
        EXPECT_FALSE(numberAs(std::uint64_t(), beyond)) << beyond;
    EXPECT_FALSE(numberAs(std::int8_t(), "-129"));
}

TEST(Coding, RefusesWhatTheFormatCannotHoldAndSaysWhere) {
    const auto errorOf = [](const auto& result) {
        return result ? "none" : result.error().description();
    };
    const std::vector<std::string> texts{"good", "bad\xff"};
    EXPECT_EQ(errorOf(PropertyListEncoder::xml().encode(texts)), "[1]: The text is not UTF-8.");
    const std::map<std::string, double, std::less<>> numbers{{"x", HUGE_VAL}};
    EXPECT_EQ(errorOf(PropertyListEncoder::binary().encode(numbers)), "none");
    EXPECT_EQ(errorOf(JSONEncoder().encode(numbers)),
              "x: JSON has no number for this one, which is not finite.");
    EXPECT_EQ(errorOf(PropertyListEncoder::binary().encode(std::string("lone"))),
              "A property list is a dictionary or a list.");
    EXPECT_EQ(errorOf(JSONEncoder().encode(std::string("lone"))), "none");
    EXPECT_EQ(errorOf(PropertyListEncoder::xml().encode(std::vector<std::string>{"\x01"})),
              "The property-list format cannot hold the value.");
}

} // namespace
