// What lets the agent run for months: it ends when asked, rests at no cost, holds on to nothing,
// and whatever lies in the folders it lives and goes on reporting.

#include "Platform/PropertyList.h"
#include "Tests/Support/WaitUntil.h"
#include "Tools/AgentTrial.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace {

using Tools::jobFile;
namespace fs = std::filesystem;

constexpr bool isSanitized = !std::string_view(CORBEL_SANITIZERS).empty();

class LongLife : public ::testing::Test {
protected:
    fs::path processFolder() const { return fs::path("/proc") / std::to_string(trial.process()); }

    // Reads lines up to the report of a new file made for the purpose.
    void expectToBeReporting() {
        const auto marker =
            trial.library() / "StartupItems" / ("marker" + std::to_string(++markers));
        trial.save(marker, marker.string());
        while (const auto line = trial.nextLine(std::chrono::seconds(60))) {
            if (line->text.ends_with("New: " + marker.string()))
                return;
        }
        FAIL() << "the agent no longer reports";
    }

    std::size_t openDescriptors() const {
        return static_cast<std::size_t>(std::distance(
            fs::directory_iterator(processFolder() / "fd"), fs::directory_iterator()));
    }

    Tools::AgentTrial trial{CORBEL_AGENT};
    int markers = 0;
};

TEST_F(LongLife, EndsWellHoweverItIsAsked) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        ASSERT_TRUE(trial.start());
        EXPECT_EQ(trial.end(signal), EXIT_SUCCESS) << "signal " << signal;
    }
}

TEST_F(LongLife, HoldsOnToNoDescriptorAndNoDeadProcess) {
    ASSERT_TRUE(trial.start());
    expectToBeReporting();
    const auto before = openDescriptors();
    for (int i = 0; i < 3; ++i)
        expectToBeReporting();
    EXPECT_EQ(openDescriptors(), before);
    std::ifstream children(processFolder() / "task" / std::to_string(trial.process()) / "children");
    std::string child;
    EXPECT_FALSE(children >> child);
}

TEST_F(LongLife, OutlivesTheReaderOfItsOutput) {
    ASSERT_TRUE(trial.start());
    trial.closeOutput();
    trial.save(trial.userAgents() / "x.plist", jobFile("org.example.x"));
    ASSERT_TRUE(trial.waitUntilAtRest());
    trial.reopenOutput();
    expectToBeReporting();
}

std::string repeat(std::string_view text, std::size_t count) {
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

TEST_F(LongLife, LivesWithWhateverLiesInItsFolders) {
    ASSERT_TRUE(trial.start());
    expectToBeReporting();
    const auto folder = trial.userAgents();

    // What is no regular file.
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_GE(listener, 0);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    std::ranges::copy((folder / "socket").string(), address.sun_path);
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    close(listener);
    fs::create_symlink("/dev/zero", folder / "endless");
    fs::create_symlink("/dev/tty", folder / "terminal");
    fs::create_symlink(folder / "pipe", folder / "link to pipe");
    fs::create_symlink("circle", folder / "circle");
    fs::create_symlink("nowhere", folder / "dangling");
    expectToBeReporting();

    // What unfolds.
    const std::pair<const char*, std::string> files[] = {
        {"nested xml", "<plist>" + repeat("<array>", 1'000'000)},
        {"nested text", repeat("(", 1'000'000)},
        {"wide xml", "<plist><array>" + repeat("<true/>", 1'000'000) + "</array></plist>"},
        {"label", jobFile(std::string(40'000'000, 'x'))},
        {"no end", "<plist><dict><key>" + std::string(20'000'000, 'k')},
        {"tag", "<" + std::string(20'000'000, 't')},
    };
    for (const auto& [name, content] : files)
        trial.save(folder / name, content);
    expectToBeReporting();

    // What takes long, and what is gone before it is read.
    TestSupport::writeFile(trial.elsewhere() / "sparse", "");
    fs::resize_file(trial.elsewhere() / "sparse", 3'000'000'000);
    fs::rename(trial.elsewhere() / "sparse", folder / "sparse");
    for (int i = 0; i < 100; ++i)
        trial.save(folder / ("vanishing" + std::to_string(i)), std::to_string(i));
    for (int i = 0; i < 100; ++i)
        fs::remove(folder / ("vanishing" + std::to_string(i)));
    expectToBeReporting();
    fs::remove(folder / "sparse");
    expectToBeReporting();

    if (!isSanitized) { // a sanitizer's own memory is none of the agent's
        EXPECT_LT(Tools::readProcessNumber(processFolder() / "status", "VmHWM"), 96 * 1024);
        EXPECT_LE(Tools::readProcessNumber(processFolder() / "status", "Threads"), 6);
    }
    EXPECT_EQ(trial.end(), EXIT_SUCCESS);
}

} // namespace
