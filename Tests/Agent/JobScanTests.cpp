#include "Tests/Support/Testing.h"
#include "Vesper_Pro_Agent/JobFileReader.h"
#include "Vesper_Pro_Agent/JobScanner.h"

#include <sys/stat.h>

#include <fstream>
#include <future>

namespace {

using namespace Vesper_Pro_Agent;
using Platform::URL;
using TestSupport::writeFile;

std::string job(const std::string& label) {
    return "<plist><dict><key>Label</key><string>" + label + "</string></dict></plist>";
}

class JobScanTest : public ::testing::Test {
protected:
    JobSnapshot scan(const JobSnapshot& previous = {}) const {
        const std::vector folders = {
            URL::file(folder.path().string(), URL::DirectoryHint::isDirectory),
            URL::file((folder / "missing").string(), URL::DirectoryHint::isDirectory)};
        JobScanner scanner(folders, [] {});
        std::promise<JobSnapshot> jobs;
        scanner.scan(std::make_shared<JobSnapshot>(previous),
                     [&](JobSnapshot found) { jobs.set_value(std::move(found)); });
        return jobs.get_future().get();
    }

    std::string path(std::string_view name) const { return (folder / name).string(); }

    TestSupport::TemporaryFolder folder;
};

TEST_F(JobScanTest, TakesEveryReadableFileAndNothingElse) {
    writeFile(folder / "job.plist", job("org.example"));
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
    for (const auto& [found, seen] : jobs)
        paths.push_back(found);
    EXPECT_EQ(paths, (std::vector{path(".hidden"), path("a b%20\u00E9.txt"), path("job.plist"),
                                  path("link")}));
    EXPECT_EQ(jobs.at(path("job.plist")).label, "org.example");
    EXPECT_EQ(jobs.at(path("link")).label, "org.example");
    EXPECT_EQ(jobs.at(path(".hidden")).label, std::nullopt);
}

TEST_F(JobScanTest, FindsTheLabelOfAFileThatSpansManyBuffers) {
    writeFile(folder / "large", "<plist><dict><key>Comment</key><string>" +
                                    std::string(1'000'000, 'x') + "</string>" +
                                    "<key>Label</key><string>late</string></dict></plist>");
    std::ofstream(folder / "tool", std::ios::binary).seekp(3'000'000).put('x');
    const auto jobs = scan();
    EXPECT_EQ(jobs.at(path("large")).label, "late");
    EXPECT_EQ(jobs.at(path("tool")).label, std::nullopt);
    EXPECT_NE(jobs.at(path("large")).checksum, jobs.at(path("tool")).checksum);
}

TEST_F(JobScanTest, AFileThatIsTooLargeToReadIsKnownByItsBeginningAndItsSize) {
    JobFileReader reader([] { return true; }, 300'000);
    const auto read = [&](std::uintmax_t size, char first) {
        writeFile(folder / "tool", std::string(1, first));
        std::filesystem::resize_file(folder / "tool", size);
        return reader.read(URL::file(path("tool")), nullptr)->checksum;
    };
    constexpr std::uintmax_t tooLarge = std::uintmax_t{1} << 40;
    const auto known = read(tooLarge, 'x');
    EXPECT_EQ(read(tooLarge, 'x'), known);
    EXPECT_NE(read(tooLarge + 1, 'x'), known);
    EXPECT_NE(read(tooLarge, 'y'), known);
    EXPECT_NE(read(400'000, 'x'), read(400'001, 'x')); // just beyond
}

TEST_F(JobScanTest, ReadsTheLabelAnewWhenTheContentDiffersFromWhatWasKnown) {
    writeFile(folder / "a", job("one"));
    writeFile(folder / "b", job("two"));
    const auto before = scan();
    writeFile(folder / "a", job("three"));
    const auto after = scan(before);
    EXPECT_EQ(after.at(path("a")).label, "three");
    EXPECT_EQ(after.at(path("b")).label, "two");
    EXPECT_NE(after.at(path("a")).checksum, before.at(path("a")).checksum);
    EXPECT_EQ(after.at(path("b")).checksum, before.at(path("b")).checksum);
}

} // namespace
