#include "CorbelKit/Services/RunTool.h"
#include "Tests/Support/Testing.h"

#include <csignal>

using namespace CorbelKit;

TEST(RunTool, GivesWhatTheToolMakesOfItsArguments) {
    using List = std::vector<std::string>;
    const TestSupport::TemporaryFolder folder;
    const auto noProgram = (folder / "tool").string();
    TestSupport::writeFile(noProgram, "no program");
    std::filesystem::permissions(noProgram, std::filesystem::perms::owner_all);
    std::signal(SIGPIPE, SIG_DFL); // also where nobody may read the newline
    // "é" across the border of the first two pieces of 1024 bytes spoils both; the third stands.
    const auto pieces = folder / "pieces";
    TestSupport::writeFile(pieces, std::string(1023, 'a') + "é" + std::string(1023, 'b') + "ccc");

    const std::tuple<ToolArguments, std::string, SendNewline, std::string> cases[] = {
        {"echo \"$0 $#\"; echo seen >&2", "/bin/sh", SendNewline::no, "/bin/sh 0\nseen\n"},
        {"a  b", "/usr/bin/printf", SendNewline::no, "a  b"},
        {List{"%s|", "a", "b c"}, "/usr/bin/printf", SendNewline::no, "a|b c|"},
        {List{"-c"}, "/usr/bin/wc", SendNewline::yes, "1\n"},
        {List{pieces}, "/bin/cat", SendNewline::no, "ccc"},
        {std::monostate(), "/bin/echo", SendNewline::no, ""},
        {"x", noProgram, SendNewline::yes, ""},
        {"x", folder.path(), SendNewline::yes, ""},
        {"x", "/nowhere/tool", SendNewline::yes, "/nowhere/tool does not exist"},
    };
    for (const auto& [arguments, tool, sendNewline, output] : cases)
        EXPECT_EQ(runTool(arguments, tool, sendNewline), output) << tool;
}
