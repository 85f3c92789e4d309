#include "Platform/FileSystemEventStream.h"
#include "Tests/Platform/ReportedPaths.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using Platform::DispatchQueue;
using Platform::FileSystemEventStream;
using TestSupport::writeFile;

class FileSystemEventStreamTest : public ::testing::Test {
protected:
    TestSupport::TemporaryFolder temporary;
    const fs::path root = temporary.path();
    ReportedPaths reported;
};

TEST_F(FileSystemEventStreamTest, LetsGoOfItsCallBackAtTheEnd) {
    auto held = std::make_shared<int>(0);
    const std::weak_ptr<int> weak = held;
    auto stream = FileSystemEventStream::make(root.string(), std::chrono::milliseconds(20),
                                              DispatchQueue::concurrent("test.events"),
                                              [held](const auto&) {});
    held.reset();
    writeFile(root / "file", "1");
    stream.reset();
    EXPECT_TRUE(TestSupport::waitUntil([&] { return weak.expired(); }));
}

TEST_F(FileSystemEventStreamTest, WatchesOneTreeForManyStreams) {
    fs::create_directory(root / "inner");
    std::vector<ReportedPaths> records(200);
    std::vector<std::unique_ptr<FileSystemEventStream>> streams;
    for (const auto& each : records) {
        const auto path = &each == &records.back() ? root / "inner" : root;
        streams.push_back(each.streamOf(path.string()));
    }
    streams.erase(streams.begin(), streams.begin() + 100); // the others go on
    writeFile(root / "inner" / "file", "1");
    for (std::size_t index = 100; index < records.size(); ++index)
        EXPECT_TRUE(records[index].soonContain((root / "inner" / "file").string()));
}

} // namespace
