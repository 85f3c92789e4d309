#include "CorbelKit/Services/RunTool.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>

using CorbelKit::runTool;
using CorbelKit::SendNewline;

TEST(RunTool, NamesAToolThatDoesNotExist) {
    EXPECT_EQ(runTool("x", "/nowhere/tool", SendNewline::yes), "/nowhere/tool does not exist");
}

TEST(RunTool, PassesOneTextToAShellAsItsCommandAndToOthersAsTheOneArgument) {
    EXPECT_EQ(runTool("echo \"$0 $#\"; echo seen >&2", "/bin/sh", SendNewline::no),
              "/bin/sh 0\nseen\n");
    EXPECT_EQ(runTool("a  b", "/usr/bin/printf", SendNewline::no), "a  b");
    EXPECT_EQ(
        runTool(std::vector<std::string>{"%s|", "a", "b c"}, "/usr/bin/printf", SendNewline::no),
        "a|b c|");
    EXPECT_EQ(runTool(std::monostate(), "/bin/echo", SendNewline::no), "");
}

TEST(RunTool, EndsStandardInputAfterTheNewline) {
    EXPECT_EQ(runTool(std::vector<std::string>{"-c"}, "/usr/bin/wc", SendNewline::yes), "1\n");
}

TEST(RunTool, LeavesOutEachPieceThatIsNotTextByItself) {
    // "é" across the border of the first two pieces of 1024 bytes spoils both; the third stands.
    const auto* script = "head -c 1023 /dev/zero | tr '\\0' a; printf '\\303\\251';"
                         "head -c 1023 /dev/zero | tr '\\0' b; printf ccc";
    TestSupport::TemporaryFolder folder;
    const auto output = folder / "output";
    runTool(std::string("{ ") + script + "; } > " + output.string(), "/bin/sh", SendNewline::no);
    EXPECT_EQ(runTool(std::vector<std::string>{output.string()}, "/bin/cat", SendNewline::no),
              "ccc");
}

TEST(RunTool, DoesNotWaitForAToolThatCannotBeStarted) {
    std::signal(SIGPIPE, SIG_IGN); // as the application has it: nobody will read the newline
    TestSupport::TemporaryFolder folder;
    TestSupport::writeFile(folder / "tool", "no program");
    std::filesystem::permissions(folder / "tool", std::filesystem::perms::owner_all);
    EXPECT_EQ(runTool(std::monostate(), (folder / "tool").string(), SendNewline::yes), "");
    EXPECT_EQ(runTool("x", folder.path().string(), SendNewline::yes), "");
}
