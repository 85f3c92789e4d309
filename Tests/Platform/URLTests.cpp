#include "Platform/URL.h"

#include <gtest/gtest.h>

using Platform::URL;
using Hint = URL::DirectoryHint;

TEST(URL, WritesAPathAsTheURLSyntaxAllowsAndReadsItBack) {
    const std::tuple<std::string, Hint, std::string, std::string> cases[] = {
        {"/Users/x/Library/LaunchAgents", Hint::isDirectory,
         "file:///Users/x/Library/LaunchAgents/", "/Users/x/Library/LaunchAgents"},
        {"/", Hint::inferFromPath, "file:///", "/"},
        {"/a/", Hint::inferFromPath, "file:///a/", "/a"},
        {"/a/", Hint::notDirectory, "file:///a", "/a"},
        {"/a b.plist", Hint::inferFromPath, "file:///a%20b.plist", "/a b.plist"},
        {"/100%/%41", Hint::inferFromPath, "file:///100%25/%2541", "/100%/%41"},
        {"/a?b#c;d", Hint::inferFromPath, "file:///a%3Fb%23c;d", "/a?b#c;d"},
        {"/\xFF\n", Hint::inferFromPath, "file:///%FF%0A", "/\xFF\n"},
        {"/[a]\\|`{}^\"<>", Hint::inferFromPath, "file:///%5Ba%5D%5C%7C%60%7B%7D%5E%22%3C%3E",
         "/[a]\\|`{}^\"<>"},
        {"/a:b@c!$&'()*+,;=-._~", Hint::inferFromPath, "file:///a:b@c!$&'()*+,;=-._~",
         "/a:b@c!$&'()*+,;=-._~"},
        {"//a/./b/../c", Hint::inferFromPath, "file:////a/./b/../c", "//a/./b/../c"},
    };
    for (const auto& [path, hint, text, pathBack] : cases) {
        const auto url = URL::file(path, hint);
        EXPECT_EQ(url.absoluteString(), text);
        EXPECT_EQ(url.path(), pathBack);
        EXPECT_TRUE(url.isFileURL()) << text;
        EXPECT_EQ(url.hasDirectoryPath(), text.ends_with('/')) << text;
        EXPECT_EQ(URL::parse(text), url) << text;
    }
}

TEST(URL, AppendsAndDeletesComponents) {
    const auto folder = URL::file("/a b", Hint::isDirectory);
    EXPECT_EQ(folder.appending("c%").absoluteString(), "file:///a%20b/c%25");
    EXPECT_EQ(URL::file("/").appending("/c").absoluteString(), "file:///c");
    EXPECT_EQ(folder.appending("c/").absoluteString(), "file:///a%20b/c/");
    EXPECT_EQ(folder.appending("c", Hint::isDirectory).absoluteString(), "file:///a%20b/c/");
    EXPECT_EQ(folder.appending("c/", Hint::notDirectory).absoluteString(), "file:///a%20b/c");
    EXPECT_EQ(URL::parse("https://host?q#f")->appending("a").absoluteString(),
              "https://host/a?q#f");

    EXPECT_EQ(folder.appending("c").deletingLastPathComponent(), folder);
    EXPECT_EQ(folder.deletingLastPathComponent(), URL::file("/"));
    EXPECT_EQ(URL::file("/").deletingLastPathComponent(), URL::file("/"));
}

TEST(URL, KeepsTheTextOfAnAbsoluteURLAsItStands) {
    for (const auto* text : {"vesperpro10joburl://L3RtcC8+Pz8/YQ==", "vesperpro10joburl:///+/=",
                             "mailto:a@b.example", "HTTPS://Host.Example:80/a/../b?c=d&e#f",
                             "http://[::1]/", "file:///a%ff", "file:///%2500", "x-a.b+c:"}) {
        const auto url = URL::parse(text);
        ASSERT_TRUE(url) << text;
        EXPECT_EQ(url->absoluteString(), text);
    }
}

TEST(URL, RefusesTextThatIsNoAbsoluteURL) {
    for (const std::string_view text :
         {"", "a", "/a", "//host/a", "1a:b", ":a", "file:///a b", "file:///\xC3\xA9", "file:///a%",
          "file:///a%4", "file:///a%zz", "file:///a%00", "x://a\nb", "http://host:port/", "a b:c",
          "a{}:b"})
        EXPECT_FALSE(URL::parse(text)) << text;
    EXPECT_FALSE(URL::parse(std::string_view("file:///a\0b", 11)));
}

// The cases of RFC 3986, section 5.4, that differ in kind.
TEST(URL, LeadsFromABaseToAnother) {
    const auto base = *URL::parse("http://a/b/c/d;p?q#f");
    for (const auto& [text, expected] : std::initializer_list<std::pair<const char*, const char*>>{
             {"g", "http://a/b/c/g"},
             {"g/?y#s", "http://a/b/c/g/?y#s"},
             {"//g", "http://g"},
             {"?y", "http://a/b/c/d;p?y"},
             {"#s", "http://a/b/c/d;p?q#s"},
             {"", "http://a/b/c/d;p?q"},
             {"../../../g", "http://a/g"},
             {"./g/../h", "http://a/b/c/h"},
             {"//g/../h", "http://g/h"}})
        EXPECT_EQ(URL::parse(text, base).value_or(base).absoluteString(), expected) << text;
    EXPECT_EQ(URL::parse("g", *URL::parse("http://a"))->absoluteString(), "http://a/g");
    EXPECT_FALSE(URL::parse("a b", base));
}
