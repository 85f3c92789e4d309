// What lets the agent run for months: it ends when asked, rests at no cost, holds on to nothing,
// and whatever lies in the folders it lives and goes on reporting.

#include "Tests/EndToEnd/AgentTest.h"

#include <sys/stat.h>

#include <fstream>

namespace {

namespace fs = std::filesystem;

class LongLife : public AgentTest {
protected:
    fs::path processFolder() const { return fs::path("/proc") / std::to_string(trial.process()); }

    // Reads lines up to the report of a new file made for the purpose.
    void expectToBeReporting() {
        const auto marker = trial.library() / "StartupItems" / std::to_string(++saves);
        trial.save(marker, marker.string());
        while (const auto line = trial.nextLine(std::chrono::seconds(60))) {
            if (line->text.ends_with("New: " + marker.string()))
                return;
        }
        FAIL() << "the agent no longer reports";
    }

    std::ptrdiff_t openDescriptors() const {
        return std::distance(fs::directory_iterator(processFolder() / "fd"), {});
    }
};

TEST_F(LongLife, HoldsOnToNoDescriptorAndNoDeadProcess) {
    start();
    expectToBeReporting();
    const auto before = openDescriptors();
    for (int i = 0; i < 3; ++i)
        expectToBeReporting();
    EXPECT_EQ(openDescriptors(), before);
    std::ifstream children(processFolder() / "task" / std::to_string(trial.process()) / "children");
    std::string child;
    EXPECT_FALSE(children >> child);
    if (std::string_view(CORBEL_SANITIZERS).empty()) { // their own memory is none of the agent's
        EXPECT_LE(TestSupport::readProcessNumber(processFolder() / "status", "VmRSS"), 12 * 1024);
    }
}

TEST_F(LongLife, LivesWithWhatIsNoRegularFileOrSparse) {
    start();
    const auto folder = trial.userAgents();
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    ASSERT_EQ(mknod((folder / "socket").c_str(), S_IFSOCK | 0600, 0), 0);
    fs::create_symlink("/dev/zero", folder / "endless");
    fs::create_symlink("/dev/tty", folder / "terminal");
    fs::create_symlink(folder / "pipe", folder / "link to pipe");
    expectToBeReporting();

    TestSupport::writeFile(trial.elsewhere() / "sparse", "");
    fs::resize_file(trial.elsewhere() / "sparse", 3'000'000'000);
    fs::rename(trial.elsewhere() / "sparse", folder / "sparse");
    expectToBeReporting();
    fs::remove(folder / "sparse");
    expectToBeReporting();
    EXPECT_EQ(trial.end(), EXIT_SUCCESS);
}

TEST_F(LongLife, LivesWithWhatUnfolds) {
    start();
    const auto repeat = [](std::string_view text, int count) {
        std::string result;
        for (; count > 0; --count)
            result += text;
        return result;
    };
    const std::pair<const char*, std::string> files[] = {
        {"nested xml", "<plist>" + repeat("<array>", 1'000'000)},
        {"wide xml", "<plist><array>" + repeat("<true/>", 1'000'000) + "</array></plist>"},
        {"label", TestSupport::jobFile(std::string(40'000'000, 'x'))},
        {"no end", "<plist><dict><key>" + std::string(20'000'000, 'k')},
    };
    for (const auto& [name, content] : files)
        trial.save(trial.userAgents() / name, content);
    expectToBeReporting();
    if (std::string_view(CORBEL_SANITIZERS).empty()) {
        EXPECT_LT(TestSupport::readProcessNumber(processFolder() / "status", "VmHWM"), 96 * 1024);
        EXPECT_LE(TestSupport::readProcessNumber(processFolder() / "status", "Threads"), 6);
    }
    EXPECT_EQ(trial.end(), EXIT_SUCCESS);
}

} // namespace
