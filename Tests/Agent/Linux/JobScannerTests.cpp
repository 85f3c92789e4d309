#include "Tests/Support/Linux/HungFile.h"
#include "Tests/Support/Testing.h"
#include "Vesper_Pro_Agent/JobScanner.h"

#include <future>
#include <list>

namespace {

using namespace Vesper_Pro_Agent;
using namespace std::chrono_literals;
using namespace TestSupport;

class LongScan : public ::testing::Test {
protected:
    JobSnapshot scan(const JobSnapshot& previous) {
        auto jobs = std::make_shared<std::promise<JobSnapshot>>();
        scanner.scan(std::make_shared<JobSnapshot>(previous),
                     [jobs](ScanResult found) { jobs->set_value(std::move(found.jobs)); });
        auto future = jobs->get_future();
        EXPECT_EQ(future.wait_for(20s), std::future_status::ready) << "the scan hangs";
        return future.get();
    }

    Platform::SHA256::Value checksum(const JobSnapshot& jobs, std::string_view name) const {
        const auto found = jobs.find((folder / name).string());
        return found ? found->checksum : Platform::SHA256::Value();
    }

    TemporaryFolder folder;
    std::atomic<int> lateEnds = 0;
    JobScanner scanner{
        {folderURL(folder / "slow"), folderURL(folder / "fast")}, [this] { ++lateEnds; }, 250ms};
};

class HungScan : public LongScan, public ::testing::WithParamInterface<const char*> {};

TEST_P(HungScan, GoesOnWithTheRestAndTakesTheAnswerWhenItComes) {
    std::filesystem::create_directories(folder / "slow");
    std::filesystem::create_directories(folder / "fast");
    writeFile(folder / "slow/job", "before");
    writeFile(folder / "fast/job", "before");
    const auto baseline = scan({});

    HungFile hung(folder / GetParam());
    if (!hung.isHung())
        GTEST_SKIP() << "needs the right to answer for the file system (CAP_SYS_ADMIN)";
    writeFile(folder / "slow/job", "after");
    writeFile(folder / "slow/new", "new");
    writeFile(folder / "fast/job", "after");
    auto jobs = scan(baseline);
    EXPECT_TRUE(hung.isAsked());
    EXPECT_EQ(checksum(jobs, "slow/job"), checksum(baseline, "slow/job")) << "still as known";
    EXPECT_NE(checksum(jobs, "fast/job"), checksum(baseline, "fast/job"));
    jobs = scan(jobs); // does not wait for it anew
    EXPECT_EQ(checksum(jobs, "slow/job"), checksum(baseline, "slow/job"));
    EXPECT_EQ(lateEnds, 0);

    hung.answer();
    ASSERT_TRUE(waitUntil([&] { return lateEnds == 1; }));
    jobs = scan(jobs);
    EXPECT_NE(checksum(jobs, "slow/job"), checksum(baseline, "slow/job"));
    EXPECT_TRUE(jobs.find((folder / "slow/new").string()));
}

INSTANTIATE_TEST_SUITE_P(OfAFileAndOfAFolder, HungScan, ::testing::Values("slow/job", "slow"));

// Neither in number nor in time.
TEST_F(LongScan, ManyThatHangHoldTheRestNoLongerThanOne) {
    std::filesystem::create_directories(folder / "slow");
    std::filesystem::create_directories(folder / "fast");
    std::list<HungFile> hung;
    for (int number = 0; number < 20; ++number) {
        writeFile(folder / "slow" / std::to_string(number), "");
        hung.emplace_back(folder / "slow" / std::to_string(number));
    }
    if (!hung.back().isHung())
        GTEST_SKIP() << "needs the right to answer for the file system (CAP_SYS_ADMIN)";
    writeFile(folder / "fast/job", "");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(scan({}).find((folder / "fast/job").string()));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 2s);
}

// An exception to no rule: what goes on being read is not given up.
TEST_F(LongScan, WaitsForALargeFileThatIsRead) {
    std::filesystem::create_directory(folder / "slow");
    writeFile(folder / "slow/tool", "x");
    std::filesystem::resize_file(folder / "slow/tool", 200'000'000);
    EXPECT_NE(checksum(scan({}), "slow/tool"), Platform::SHA256::Value());
}

} // namespace
