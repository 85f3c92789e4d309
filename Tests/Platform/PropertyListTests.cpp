#include "Platform/PropertyList.h"
#include "Tests/Platform/PropertyListSamples.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace std::string_literals;
using namespace PropertyListSamples;
using Platform::PropertyList;
using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

/// What is read from the bytes.
using Case = std::pair<std::string, PropertyList>;

PropertyList string(std::string content) {
    return content;
}

PropertyList data(std::string_view content) {
    return PropertyList::Data(bytes(content).begin(), bytes(content).end());
}

PropertyList date(long seconds) {
    return PropertyList::Date(std::chrono::seconds(seconds));
}

void check(const std::vector<Case>& cases) {
    for (const auto& [content, value] : cases)
        EXPECT_EQ(read(content), value) << content;
}

void checkRefused(const std::vector<std::string>& cases) {
    for (const auto& content : cases)
        EXPECT_FALSE(read(content)) << content;
}

TEST(PropertyListXML, ReadsEachKindOfValueAndRefusesWhatItsElementDoesNotAllow) {
    check({
        {"<string>a&lt;&#228;<!-- x --><![CDATA[<b>]]><?p?>c</string>", string("a<\u00E4<b>c")},
        {"<integer> 12\n</integer>", 12},
        {"<integer>-9223372036854775808</integer>", std::numeric_limits<std::int64_t>::min()},
        {"<integer>18446744073709551615</integer>", std::numeric_limits<std::uint64_t>::max()},
        {"<integer>-0x1F</integer>", -31},
        {"<real>-Infinity</real>", -std::numeric_limits<double>::infinity()},
        {"<real>1e999</real>", std::numeric_limits<double>::infinity()},
        {"<data> YW\nJj </data>", data("abc")},
    });
    checkRefused(
        {"<string>&nbsp;</string>", "<!DOCTYPE plist SYSTEM 'x.dtd'><string>&nbsp;</string>",
         "<integer>-9223372036854775809</integer>", "<integer>18446744073709551616</integer>",
         "<integer>" + repeated("0", 600) + "</integer>", "<real>0x1p3</real>",
         "<date>2023-02-29T00:00:00Z</date>", "<date>2023-02-28T24:00:00Z</date>",
         "<data>YQ</data>", "<data>YQ==YQ==</data>"});
    const auto notANumber = read("<real>NaN</real>").value_or(PropertyList());
    EXPECT_TRUE(std::isnan(std::get<double>(notANumber.value())));
}

TEST(PropertyListXML, HoldsTheOrderOfKeysAndValuesAndOneRoot) {
    check({
        {" <dict> <key>a</key> <array> <true/> <false/> </array> </dict> ",
         Dictionary{{"a", Array{true, false}}}},
        {"<dict><key>a</key><true/><key>a</key><false/></dict>", Dictionary{{"a", false}}},
    });
    checkRefused({"<dict><key>a</key></dict>", "<dict><key>a</key><key>b</key><true/></dict>",
                  "<dict><key>a</key><true/><true/></dict>", "<array><key>a</key></array>",
                  "<array><plist><true/></plist></array>", "<plist><plist><true/></plist></plist>",
                  "<plist><true/><true/></plist>", "<true/><true/>"});
}

TEST(PropertyListXML, ReadsEveryEncodingOfExpatAndWhiteSpaceBeforeTheDeclaration) {
    const auto utf16Document = "<?xml version='1.0' encoding='UTF-16'?><string>a</string>";
    check({
        {"\xEF\xBB\xBF<string>\u00E4</string>", string("\u00E4")},
        {"\xFF\xFE" + utf16(utf16Document, false), string("a")},
        {"\xFE\xFF" + utf16(utf16Document, true), string("a")},
        {utf16(utf16Document, true), string("a")},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><string>\xE4</string>", string("\u00E4")},
        {"\n <?xml version='1.0'?><string>a</string>", string("a")},
        {"\xEF\xBB\xBF\n<?xml version='1.0'?><string>a</string>", string("a")},
    });
    checkRefused({"<?xml version='1.0' encoding='US-ASCII'?><string>\xE4</string>",
                  "<?xml version='1.0' encoding='KOI8-R'?><string>a</string>",
                  "<string>\xE4</string>"});
}

TEST(PropertyListXML, DeclaresNothing) {
    check({
        {"<!DOCTYPE plist PUBLIC '-//X//Y' 'http://example.com/x.dtd'><true/>", true},
        {"<!DOCTYPE plist [<!-- nothing -->]><true/>", true},
    });
    checkRefused({"<!DOCTYPE plist [<!ENTITY a 'b'>]><true/>",
                  "<!DOCTYPE plist [<!ENTITY a SYSTEM '/etc/passwd'>]><string>&a;</string>",
                  "<!DOCTYPE plist [<!ATTLIST true a CDATA 'b'>]><true/>",
                  "<!DOCTYPE plist [%a; <!ENTITY b 'c'>]><string>&b;</string>"});
}

TEST(PropertyListText, ReadsTheOldForm) {
    check({
        {"{ a = b; \"c d\" = ( 1, '2', ); }",
         Dictionary{{"a", string("b")}, {"c d", Array{string("1"), string("2")}}}},
        {"<0fbd 77>", data("\x0F\xBD\x77")},
        {"bplist", string("bplist")},
        {"/**/a //\n", string("a")},
        {"\"http://x\" = http://y;\n/* c */ key;", // a table of localised texts
         Dictionary{{"http://x", string("http://y")}, {"key", string("key")}}},
        {"\"\xC3\xA4\"", string("\u00E4")},
        {"\xEF\xBB\xBF\"\xC3\xA4\"", string("\u00E4")},
        {"\xFF\xFE" + utf16("{a=b;}", false), Dictionary{{"a", string("b")}}},
        // A pair of surrogates on the boundary of a block of conversion.
        {"\xFF\xFE" + utf16("'" + std::string(510, 'x'), false) + "\x3D\xD8\x00\xDE'\0"s,
         string(std::string(510, 'x') + "\U0001F600")},
    });
    checkRefused({"(a b)", "{ a = b }", "{} {}", "<0fb>", "/* no end", "a = b; (", "(\xC3\xA4)",
                  "\xFE\xFF" + utf16("{a=b;}", true) + "x"});
}

TEST(PropertyListText, ResolvesEscapes) {
    check({
        {R"("\n\t\"\\\'\q")", string("\n\t\"\\'q")},
        {R"("\344\53x\0")", string("\u00EE+x\0"s)}, // NeXTSTEP, not Latin-1
        {R"("\U00e4\ue4;\Ud83d\Ude00")", string("\u00E4\u00E4;\U0001F600")},
        {R"("\Ud83d\U0041\Ude00")", string("\uFFFDA\uFFFD")},
    });
    checkRefused({R"("\400")", R"("no end\")"});
}

TEST(PropertyListBinary, ReadsEachKindOfObject) {
    const auto one = [](const std::string& object) { return binary({object}); };
    check({
        {one("\x00"s), PropertyList()},
        {one("\x14" + std::string(8, '\0') + std::string(8, '\xFF')),
         std::numeric_limits<std::uint64_t>::max()},
        {one("\x14" + std::string(16, '\xFF')), -1},
        {one("\x14" + std::string(15, '\0') + "\x05"), 5},
        {one("\x22\x3F\xC0\0\0"s), 1.5},
        {one("\x5F\x10\x03"
             "abc"),
         string("abc")},
        {one("\x62\xD8\x3D\0a"s), string("\uFFFDa")},
        {one("\x8F" + std::string(15, '\0') + "\x05"), PropertyList::UID{5}},
        {binary({"\xC1\x01", "\x09"}), Array{true}},
        {binary({"\xD2\x01\x02\x03\x03", ascii("a"), "\x61\0b"s, "\x09"}),
         Dictionary{{"a", true}, {"b", true}}},
        {binary({"\xD2\x01\x01\x02\x03", ascii("a"), "\x08", "\x09"}), Dictionary{{"a", true}}},
    });
    checkRefused({one("\x07"s), one("\x14\x01" + std::string(15, '\0')),
                  one("\x15" + std::string(32, '\0')), one("\x5F\x0Fxyz"), one("\x52k\xE4"),
                  one("\x88" + std::string(9, '\x01')), binary({"\xD1\x01\x01", "\x09"}),
                  binary({"\xA1\x02", "\x09"}), binary({})});
}

TEST(PropertyListBinary, RefusesTrailersThatPointOutside) {
    const auto good = binary({"\xA1\x01", ascii("a")});
    ASSERT_TRUE(read(good));
    const auto trailer = good.size() - 32;
    for (const auto field : {6U, 7U, 8U, 15U, 16U, 23U, 24U, 31U}) {
        auto bad = good;
        bad[trailer + field] = '\x7F';
        EXPECT_FALSE(read(bad)) << field;
    }
    for (auto length = "bplist"s.size() + 1; length < good.size(); ++length)
        EXPECT_FALSE(read(good.substr(0, length))) << length;
}

TEST(PropertyListLimits, CountDepthAndCost) {
    const auto nested = [](std::size_t depth) {
        return std::array{repeated("<array>", depth) + repeated("</array>", depth),
                          repeated("(", depth) + repeated(")", depth),
                          "a=" + repeated("{a=", depth - 1) + "b" + repeated(";}", depth - 1) +
                              ";"};
    };
    for (const auto& content : nested(512))
        EXPECT_TRUE(read(content));
    for (const auto& content : nested(513))
        EXPECT_FALSE(read(content));
    const auto ten = "(" + repeated("abcde,", 10) + ")";
    const auto cost = 11 * sizeof(PropertyList) + 50;
    EXPECT_TRUE(PropertyList::read(bytes(ten), {.depth = 1, .cost = cost}));
    EXPECT_FALSE(PropertyList::read(bytes(ten), {.depth = 1, .cost = cost - 1}));
}

TEST(PropertyListWriter, RefusesWhatAFormCannotHold) {
    using Format = PropertyList::Format;
    PropertyList deep = true;
    for (int depth = 0; depth < 513; ++depth)
        deep = Array{std::move(deep)};
    const std::vector<PropertyList> refusedByXML = {PropertyList(),     PropertyList::UID{1},
                                                    string("\x01"),     string("\xEF\xBF\xBF"),
                                                    date(253402300800), deep,
                                                    string("\xFF")};
    for (const auto& value : refusedByXML)
        EXPECT_FALSE(value.write(Format::xml));
    for (const auto& value : {deep, string("\xFF"), PropertyList(Dictionary{{"\xFF", true}})})
        EXPECT_FALSE(value.write(Format::binary));
    EXPECT_FALSE(PropertyList(true).write(Format::text));
}

TEST(PropertyListWriter, RefusesWhatAReaderWithTheSameLimitsRefuses) {
    std::mt19937 random(11);
    for (int round = 0; round < 200; ++round) {
        const auto format =
            round % 2 == 0 ? PropertyList::Format::xml : PropertyList::Format::binary;
        const auto value = randomValue(random, format);
        const auto whole = value.write(format);
        ASSERT_TRUE(whole);
        const PropertyList::Limits limits{.depth = random() % 6, .cost = random() % 4096};
        EXPECT_EQ(static_cast<bool>(value.write(format, limits)),
                  PropertyList::read(*whole, limits).has_value());
    }
}

} // namespace
