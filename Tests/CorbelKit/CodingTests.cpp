#include "CorbelKit/Coding/JSONCoder.h"
#include "CorbelKit/Coding/PropertyListCoder.h"
#include "Tests/Support/Testing.h"

#include <cmath>

using namespace CorbelKit;
using namespace std::string_literals;
using Platform::PropertyList;
using TestSupport::bytesOf;

namespace {

template <class T>
using Map = std::map<std::string, T, std::less<>>;

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
    std::int64_t least = INT64_MIN;
    std::uint64_t most = UINT64_MAX;
    double real = 0.1;
    std::string text = "aä€😀<&>\n";
    PropertyList::Data data = {std::byte{0}, std::byte{255}};
    PropertyList::Date date = std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) +
                              std::chrono::hours(12) + std::chrono::seconds(30 * 60 + 15);
    Platform::URL url = Platform::URL::file("/a b/");
    std::vector<Part> list = {{"first", {}}, {"second", 7}};
    std::vector<std::optional<int>> optionals = {1, std::nullopt, 3};
    Map<int> map = {{"", -1}, {"ключ", 2}};

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

TEST(Coding, TakesARecordThroughPropertyListsInTheirUsualForm) {
    const Record record;
    using List = PropertyList::Array;
    using Dictionary = PropertyList::Dictionary;
    const PropertyList form = Dictionary{
        {"yes", true},
        {"least", INT64_MIN},
        {"most", UINT64_MAX},
        {"real", 0.1},
        {"text", record.text},
        {"data", record.data},
        {"date", record.date},
        {"url", Dictionary{{"relative", "file:///a%20b/"s}}},
        {"list",
         List{Dictionary{{"name", "first"s}}, Dictionary{{"name", "second"s}, {"size", 7}}}},
        {"optionals", List{1, "$null"s, 3}},
        {"map", Dictionary{{"", -1}, {"ключ", 2}}},
    };
    for (const auto& encoder : {PropertyListEncoder::xml(), PropertyListEncoder::binary()}) {
        const auto bytes = encoder.encode(record);
        ASSERT_TRUE(bytes) << bytes.error().description();
        EXPECT_EQ(PropertyList::read(*bytes), form);
        EXPECT_EQ(*PropertyListDecoder::shared().decode<Record>(*bytes), record);
    }
}

TEST(Coding, LosesNoTextThatLooksLikeNull) {
    const std::vector<std::string> texts = {"$null", ""};
    const auto bytes = PropertyListEncoder::xml().encode(texts);
    const auto read = PropertyListDecoder::shared().decode<std::vector<std::string>>(*bytes);
    ASSERT_TRUE(read) << read.error().description();
    EXPECT_EQ(*read, texts);
    EXPECT_FALSE(PropertyListEncoder::xml().encode(std::optional(texts[0]))); // it would be none
}

TEST(Coding, TakesTheSameRecordThroughJSON) {
    const auto json = JSONEncoder().encode(Record());
    ASSERT_TRUE(json) << json.error().description();
    for (const auto* form : {R"("data":"AP8=")", R"("date":816957015)", R"("url":"file:///a%20b/")",
                             R"("optionals":[1,null,3])"})
        EXPECT_THAT(TestSupport::textOf(*json), testing::HasSubstr(form));
    EXPECT_EQ(*JSONDecoder().decode<Record>(*json), Record());
}

// The first failure, where it lies, and nothing of what came after it.
TEST(Coding, SaysWhereAndWhyAValueCannotBeDecoded) {
    using enum CodingError::Kind;

    const std::tuple<const char*, CodingError::Kind, const char*> cases[] = {
        {R"([{"name":"a"},{}])", keyNotFound, "[1]: No value associated with key \"name\"."},
        {R"([{"name":"a"},{"name":5},7])", typeMismatch,
         "[1].name: Expected to decode String but found a number instead."},
        {R"([{"name":null}])", valueNotFound, "[0].name: Expected String but found null instead."},
        {R"([{"name":"a","size":256}])", dataCorrupted,
         "[0].size: Parsed number does not fit in UInt8."},
        {R"([{"name":"a","size":true}])", typeMismatch,
         "[0].size: Expected to decode UInt8 but found a boolean instead."},
        {R"([["name"]])", typeMismatch,
         "[0]: Expected to decode Dictionary but found an array instead."},
        {R"({})", typeMismatch, "Expected to decode Array but found a dictionary instead."},
        {R"([{"name":"a"})", dataCorrupted, "The given data was not valid JSON."},
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
    EXPECT_EQ(numberAs(float(), "0.1"), 0.1F);
    EXPECT_EQ(numberAs(float(), "-3.4028234663852886e38"), -std::numeric_limits<float>::max());
    EXPECT_FALSE(numberAs(float(), "3.5e38"));
    for (const auto* beyond : {"9223372036854775808", "-9.3e18", "1e300", "0.5"})
        EXPECT_FALSE(numberAs(std::int64_t(), beyond)) << beyond;
    for (const auto* beyond : {"18446744073709551616", "-1", "1.5"})
        EXPECT_FALSE(numberAs(std::uint64_t(), beyond)) << beyond;
    EXPECT_FALSE(numberAs(std::int8_t(), "-129"));
}

TEST(Coding, RefusesWhatTheFormatCannotHoldAndSaysWhere) {
    const auto errorOf = [](const auto& encoder, const auto& value) {
        const auto result = encoder.encode(value);
        return result ? "none" : result.error().description();
    };
    const auto xml = PropertyListEncoder::xml();
    const auto binary = PropertyListEncoder::binary();
    const std::map<std::string, float> numbers{{"x", HUGE_VALF}};
    EXPECT_EQ(errorOf(xml, std::vector{"good"s, "bad\xff"s}), "[1]: The text is not UTF-8.");
    EXPECT_EQ(errorOf(xml, std::vector{"\x01"s}),
              "The property-list format cannot hold the value.");
    EXPECT_EQ(errorOf(binary, numbers), "none");
    EXPECT_EQ(errorOf(binary, "lone"s), "A property list is a dictionary or a list.");
    EXPECT_EQ(errorOf(JSONEncoder(), numbers),
              "x: JSON has no number for this one, which is not finite.");
    EXPECT_EQ(errorOf(JSONEncoder(), "lone"s), "none");
}

} // namespace
