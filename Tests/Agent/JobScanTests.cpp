#include "Tests/Support/Testing.h"
#include "Vesper_Pro_Agent/JobFileReader.h"
#include "Vesper_Pro_Agent/JobScanner.h"

#include <sys/stat.h>

#include <fstream>
#include <future>

namespace {

using namespace Vesper_Pro_Agent;
using namespace TestSupport;

class JobScanTest : public ::testing::Test {
protected:
    JobSnapshot scan() const {
        JobScanner scanner({folderURL(folder.path()), folderURL(folder / "missing")}, [] {});
        std::promise<JobSnapshot> jobs;
        scanner.scan(std::make_shared<JobSnapshot>(),
                     [&](ScanResult found) { jobs.set_value(std::move(found.jobs)); });
        return jobs.get_future().get();
    }

    static auto openForReading(const std::filesystem::path& file) {
        return Platform::FileHandle::openForReading(fileURL(file));
    }

    std::string path(std::string_view name) const { return (folder / name).string(); }

    TemporaryFolder folder;
};

TEST_F(JobScanTest, TakesEveryReadableFileAndNothingElse) {
    writeFile(folder / "job.plist",
              "<plist><dict><key>Label</key><string>org.example</string></dict></plist>");
    writeFile(folder / ".hidden", "");
    writeFile(folder / ".DS_Store", "finder");
    writeFile(folder / "a b%20\u00E9.txt", "not a property list");
    std::filesystem::create_directory(folder / "folder");
    std::filesystem::create_symlink(folder / "job.plist", folder / "link");
    std::filesystem::create_symlink(folder / "circle", folder / "circle");
    std::filesystem::create_symlink(folder / "nowhere", folder / "dangling");
    std::filesystem::create_symlink("/dev/zero", folder / "endless");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);

    const auto jobs = scan();
    std::vector<std::string> paths;
    for (const auto& job : jobs)
        paths.emplace_back(job.path);
    EXPECT_EQ(paths, (std::vector{path(".hidden"), path("a b%20\u00E9.txt"), path("job.plist"),
                                  path("link")}));
    EXPECT_EQ(jobs.find(path("job.plist"))->label, "org.example");
    EXPECT_EQ(jobs.find(path("link"))->label, "org.example");
    EXPECT_EQ(jobs.find(path(".hidden"))->label, std::nullopt);
}

TEST_F(JobScanTest, FindsTheLabelOfAFileThatSpansManyBuffers) {
    writeFile(folder / "large", "<plist><dict><key>Comment</key><string>" +
                                    std::string(1'000'000, 'x') + "</string>" +
                                    "<key>Label</key><string>late</string></dict></plist>");
    const auto known = *scan().find(path("large"));
    EXPECT_EQ(known.label, "late");
    JobFileReader reader([] { return true; });
    const auto read = [&] { return reader.read(openForReading(folder / "large"), known); };
    EXPECT_EQ(read()->label, "late"); // unchanged
    std::ofstream(folder / "large", std::ios::in | std::ios::ate).seekp(-28, std::ios::cur)
        << "LATE";
    EXPECT_EQ(read()->label, "LATE");
    EXPECT_NE(read()->checksum, known.checksum);
}

TEST_F(JobScanTest, AFileThatIsTooLargeToReadIsKnownByItsBeginningAndItsSize) {
    JobFileReader reader([] { return true; }, 300'000);
    const auto read = [&](std::uintmax_t size, char first) {
        writeFile(folder / "tool", std::string(1, first));
        std::filesystem::resize_file(folder / "tool", size);
        return reader.read(openForReading(folder / "tool"), {})->checksum;
    };
    constexpr std::uintmax_t tooLarge = std::uintmax_t{1} << 40;
    const auto known = read(tooLarge, 'x');
    EXPECT_EQ(read(tooLarge, 'x'), known);
    EXPECT_NE(read(tooLarge + 1, 'x'), known);
    EXPECT_NE(read(tooLarge, 'y'), known);
    EXPECT_NE(read(400'000, 'x'), read(400'001, 'x')); // just beyond
}

} // namespace
