// The command that reads and edits settings, as a script uses it.

#include "Tests/EndToEnd/AgentTest.h"
#include "Tests/Support/Linux/ChildProcess.h"

namespace {

namespace fs = std::filesystem;

class DefaultsTool : public ::testing::Test {
protected:
    /// What a shell prints that calls the tool `d`, errors as well, and each call's exit code in
    /// brackets where it is not 0.
    std::string run(const std::string& script) const {
        return TestSupport::ChildProcess(
                   {"sh", "-c",
                    "d() { " CORBEL_DEFAULTS
                    " \"$@\" || echo \"[$?]\"; }\nexec 2>&1\ncd \"$XDG_CONFIG_HOME\"\n" +
                        script},
                   {"XDG_CONFIG_HOME=" + folder.path().string()})
            .readAll();
    }

    const TestSupport::TemporaryFolder folder;
    const fs::path file = folder / "tarnwell/a.b.plist";
};

TEST_F(DefaultsTool, ReadsBackWhatItWrites) {
    const auto* const script = R"sh(d write a.b text 'two
words'; d write a.b dash -string -int; d write a.b number -int +9223372036854775807
d write a.b on -bool YES; d write a.b off -bool false; d write a.b list -array one 'a "b"'
d write a.b list -array-add '' "$(printf '\033[2J\303\244')"
d write a.b new -array-add x; d write a.b none -array
d domains; d read a.b text; d read a.b number; d read a.b on; d keys a.b | head -1; d read a.b)sh";
    EXPECT_EQ(run(script), R"(a.b
two
words
9223372036854775807
1
dash
{
    dash = -int;
    list = (
        one,
        "a \"b\"",
        "",
        "\033[2Jä"
    );
    new = (
        x
    );
    none = (
    );
    number = 9223372036854775807;
    off = 0;
    on = 1;
    text = "two\nwords";
}
)");
    EXPECT_EQ(run("d delete a.b list; d read a.b list; d delete a.b list; d delete a.b; d domains"),
              "corbel-defaults: the domain a.b has no key list\n[1]\n"
              "corbel-defaults: the domain a.b has no key list\n[1]\n");
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(DefaultsTool, SaysWhatItCannotDoAndChangesNothingThen) {
    run("d write a.b key old; d write a.b number -int 1");
    const auto before = run("cat tarnwell/a.b.plist");
    const std::pair<std::string, std::string> cases[] = {
        {"red a.b", "there is no command red (corbel-defaults --help)\n[2]"},
        {"read", "read takes more words (corbel-defaults --help)\n[2]"},
        {"read missing", "there is no domain missing\n[1]"},
        {"read a.b missing", "the domain a.b has no key missing\n[1]"},
        {"read ../a", "there can be no domain ../a\n[1]"},
        {"write .. key one", "there can be no domain ..\n[1]"},
        {"read \"$(printf 'a\\033b')\"", "there is no domain a\\u{1B}b\n[1]"},
        {"write a.b key one two", "there is more than one value; see -array"},
        {"write a.b key -int 1x", "1x is no whole number"},
        {"write a.b key -int 9223372036854775808", "9223372036854775808 is beyond 64 bits"},
        {"write a.b key -bool maybe", "maybe is none of yes, no, true, false, 1 and 0"},
        {"write a.b key -data 00", "there is no option -data"},
        {"write a.b number -array-add x", "number is no array\n[1]"},
        {"read a.b > /dev/full", "the output cannot be written\n"},
    };
    for (const auto& [command, message] : cases)
        EXPECT_THAT(run("d " + command), testing::HasSubstr(message)) << command;
    EXPECT_THAT(run("ulimit -f 0; d write a.b key new"), testing::HasSubstr("too large\n[1]"));
    EXPECT_EQ(run("cat tarnwell/a.b.plist; ls -A tarnwell | wc -l"), before + "2\n");
    TestSupport::writeFile(file, "no settings");
    EXPECT_THAT(run("d read a.b"), testing::HasSubstr("not a property list of settings\n[1]"));
}

} // namespace
