#include "Platform/FileSystemObjectSource.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/WaitUntil.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <chrono>

namespace {

using Platform::FileSystemObjectSource;
using Clock = std::chrono::steady_clock;

TEST(FileSystemObjectSourceLinuxTest, CallsTheHandlerSeldomInAStorm) {
    const TestSupport::TemporaryFolder folder;
    const int descriptor = FileSystemObjectSource::openForEvents(
        Platform::URL::file(folder.path().string(), Platform::URL::DirectoryHint::isDirectory));
    std::atomic<int> events = 0;
    FileSystemObjectSource source(descriptor, Platform::DispatchQueue::concurrent("test.storm"));
    std::atomic<bool> isCancelled = false;
    source.setEventHandler([&] { ++events; });
    source.setCancelHandler([&] { isCancelled = true; });
    source.resume();
    const auto start = Clock::now();
    for (int change = 0; change < 1000; ++change)
        std::filesystem::create_directory(folder / std::to_string(change));
    EXPECT_TRUE(TestSupport::waitUntil([&] { return events > 0; }));
    const int most = static_cast<int>((Clock::now() - start) / std::chrono::milliseconds(10)) + 1;
    EXPECT_LE(events, most);
    source.cancel();
    TestSupport::waitUntil([&] { return isCancelled.load(); });
    close(descriptor);
}

} // namespace
