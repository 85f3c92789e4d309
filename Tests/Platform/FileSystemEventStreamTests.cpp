#include "Platform/FileSystemEventStream.h"
#include "Tests/Platform/ToldPaths.h"
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
    ToldPaths told;
};

TEST_F(FileSystemEventStreamTest, TakesNoStepOutOfOrderAndNoneOnceReleased) {
    const auto queue = DispatchQueue::concurrent("test.events");
    const auto stream = told.created(root.string());
    stream->start(); // without a queue
    stream->stop();
    stream->invalidate();
    stream->setDispatchQueue(queue);
    stream->release(); // while it has a queue
    stream->start();
    stream->start();
    stream->invalidate(); // while it runs
    writeFile(root / "file", "1");
    EXPECT_TRUE(told.soonContain((root / "file").string()));
    for (int time = 0; time < 2; ++time) {
        stream->stop();
        stream->invalidate();
        stream->release();
    }
    stream->setDispatchQueue(queue);
    stream->start();
}

TEST_F(FileSystemEventStreamTest, TellsOnceStartedAgainThatThereWereChangesMeanwhile) {
    const auto stream = told.started(root.string());
    fs::create_directory(root / "folder");
    ASSERT_TRUE(told.soonContain((root / "folder").string()));
    stream->stop();
    told.forget();
    writeFile(root / "folder" / "file", "1");
    stream->start();
    EXPECT_TRUE(TestSupport::waitUntil([&] {
        return told.contains(root.string() + '/') ||
               told.contains((root / "folder" / "file").string());
    }));
}

TEST_F(FileSystemEventStreamTest, LetsGoOfItsCallBackAtTheEnd) {
    auto held = std::make_shared<int>(0);
    const std::weak_ptr<int> weak = held;
    auto stream = FileSystemEventStream::create(root.string(), std::chrono::milliseconds(20),
                                                [held](const auto&) {});
    held.reset();
    stream->setDispatchQueue(DispatchQueue::concurrent("test.events"));
    stream->start();
    writeFile(root / "file", "1");
    stream.reset(); // makes up for the steps that are wanting
    EXPECT_TRUE(TestSupport::waitUntil([&] { return weak.expired(); }));
}

TEST_F(FileSystemEventStreamTest, WatchesOneTreeForManyStreams) {
    fs::create_directory(root / "inner");
    std::vector<ToldPaths> tolds(200);
    std::vector<FileSystemEventStream> streams;
    for (const auto& each : tolds)
        streams.push_back(*each.started((&each == &tolds.back() ? root / "inner" : root).string()));
    streams.erase(streams.begin(), streams.begin() + 100); // the others go on
    writeFile(root / "inner" / "file", "1");
    for (std::size_t index = 100; index < tolds.size(); ++index)
        EXPECT_TRUE(tolds[index].soonContain((root / "inner" / "file").string()));
}

} // namespace
