#include "Platform/FileHandle.h"
#include "Platform/StandardOutput.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/Testing.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace {

namespace StandardOutput = Platform::StandardOutput;
using namespace std::chrono_literals;

// Another descriptor in the place of standard output.
class Redirection {
public:
    explicit Redirection(int descriptor) { dup2(descriptor, STDOUT_FILENO); }

    ~Redirection() { dup2(original_.fileDescriptor(), STDOUT_FILENO); }

    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;
    Redirection(Redirection&&) = delete;
    Redirection& operator=(Redirection&&) = delete;

private:
    Platform::FileHandle original_{dup(STDOUT_FILENO)};
};

std::string readWhatIsThere(int descriptor) {
    std::string text;
    std::array<char, 65536> buffer{};
    fcntl(descriptor, F_SETFL, O_NONBLOCK);
    for (ssize_t count = 0; (count = read(descriptor, buffer.data(), buffer.size())) > 0;)
        text.append(buffer.data(), static_cast<std::size_t>(count));
    return text;
}

} // namespace

TEST(StandardOutput, HoldsNobodyWhileItDoesNotDrainAndSaysWhatItDropped) {
    auto pipe = Platform::Pipe::make();
    ASSERT_TRUE(pipe);
    std::string seen;
    {
        const Redirection redirection(pipe->fileHandleForWriting.fileDescriptor());
        for (int i = 0; i < 20000; ++i)
            StandardOutput::writeLine(std::string(1000, 'x'));
        EXPECT_FALSE(StandardOutput::drain(10ms));
        while (!StandardOutput::drain(1ms))
            seen += readWhatIsThere(pipe->fileHandleForReading.fileDescriptor());
        StandardOutput::writeLine("and on");
        EXPECT_TRUE(StandardOutput::drain(10s));
        seen += readWhatIsThere(pipe->fileHandleForReading.fileDescriptor());
    }
    const auto written = std::ranges::count(seen, '\n') - 2;
    EXPECT_GT(written, 16000);
    EXPECT_TRUE(seen.ends_with('\n' + std::to_string(20000 - written) +
                               " lines could not be written here.\nand on\n"))
        << seen.substr(seen.size() - 100);
}

TEST(StandardOutput, WritesOnAfterAFullDiskAndAReaderThatHasGone) {
    const auto writeTo = [](const Platform::FileHandle& output, const std::string& line) {
        const Redirection redirection(output.fileDescriptor());
        StandardOutput::writeLine(line);
        EXPECT_TRUE(StandardOutput::drain(10s));
    };
    writeTo(Platform::FileHandle(open("/dev/full", O_WRONLY | O_CLOEXEC)), "lost");
    auto gone = *Platform::Pipe::make();
    static_cast<void>(gone.fileHandleForReading.close());
    writeTo(gone.fileHandleForWriting, "lost"); // and the process, which ignores no signal, lives
    const TestSupport::TemporaryFolder folder;
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit none{.rlim_cur = 0, .rlim_max = limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &none);
    writeTo(Platform::FileHandle(open((folder / "full").c_str(), O_WRONLY | O_CREAT, 0600)),
            "lost");
    setrlimit(RLIMIT_FSIZE, &limit);
    const auto pipe = *Platform::Pipe::make();
    writeTo(pipe.fileHandleForWriting, "there");
    EXPECT_EQ(readWhatIsThere(pipe.fileHandleForReading.fileDescriptor()), "there\n");
}
