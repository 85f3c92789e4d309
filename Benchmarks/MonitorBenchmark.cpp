#include "Benchmarks/Measurement.h"
#include "Benchmarks/TreeBenchmarks.h"
#include "CorbelKit/Monitors/FileSystemMonitor.h"
#include "Platform/Mutex.h"
#include "Tests/Support/Linux/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/WaitUntil.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>

namespace Benchmarks {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using CorbelKit::FileSystemMonitor;
using Platform::URL;
using TestSupport::waitUntil;

constexpr int rounds = 5;

std::shared_ptr<FileSystemMonitor> monitorOf(const fs::path& tree) {
    return FileSystemMonitor::make(URL::file(tree.string(), URL::DirectoryHint::isDirectory));
}

/// A sum over the lines of a file of the process that begin with the word.
long sumOfLines(const char* path, const std::string& word, bool isCount) {
    std::ifstream file(path);
    long sum = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(word))
            sum += isCount ? 1 : std::stol(line.substr(word.size()));
    }
    return sum;
}

long watches() {
    long count = 0;
    for (const auto& entry : fs::directory_iterator("/proc/self/fdinfo"))
        count += sumOfLines(entry.path().c_str(), "inotify wd:", true);
    return count;
}

double secondsOf(const auto& work) {
    const auto start = Clock::now();
    work();
    return Seconds(Clock::now() - start).count();
}

/// The shell keeps its output open until the command has ended.
void runShell(const std::string& command) {
    TestSupport::ChildProcess({"sh", "-c", command + " >/dev/null; :"}).readAll();
}

void waitForInotifywait(const std::string& tree) {
    const TestSupport::ChildProcess process(
        {"sh", "-c", "exec inotifywait -m -r " + tree + " 2>&1"});
    std::string line;
    do {
        line = process.readLine();
    } while (!line.empty() && !line.starts_with("Watches established"));
}

bool compareStart(const fs::path& tree) {
    double start = 1e9;
    double find = 1e9;
    double inotifywait = 1e9;
    const bool hasInotifywait = fs::exists("/usr/bin/inotifywait");
    for (int round = 0; round < rounds; ++round) {
        std::shared_ptr<FileSystemMonitor> monitor;
        start = std::min(start, secondsOf([&] { monitor = monitorOf(tree); }));
        monitor.reset();
        waitUntil([] { return watches() == 0; });
        find = std::min(find, secondsOf([&] { runShell("find " + tree.string() + " -type d"); }));
        if (hasInotifywait) {
            inotifywait =
                std::min(inotifywait, secondsOf([&] { waitForInotifywait(tree.string()); }));
        }
    }
    std::printf("  start %.1f ms, find %.1f ms", start * 1e3, find * 1e3);
    std::printf(hasInotifywait ? ", inotifywait %.1f ms\n" : "\n", inotifywait * 1e3);
    const bool holds = report("Start of a monitor, against find -type d", start / find, 2);
    if (!hasInotifywait) {
        std::printf("inotifywait is not installed (package inotify-tools): not compared\n");
        return holds;
    }
    return report("Start of a monitor, against inotifywait -r", start / inotifywait, 1) && holds;
}

class CountingDelegate : public CorbelKit::MonitorDelegate {
public:
    void monitorDidChange(const URL& url) override {
        const Platform::MutexLock lock(mutex_);
        ++calls_[url.path()];
    }

    int calls(const fs::path& folder) const {
        const Platform::MutexLock lock(mutex_);
        const auto found = calls_.find(folder.string());
        return found == calls_.end() ? 0 : found->second;
    }

private:
    mutable Platform::Mutex mutex_;
    std::map<std::string, int> calls_ CORBEL_GUARDED_BY(mutex_);
};

bool raiseStorm() {
    constexpr int folders = 1000;
    constexpr int files = 100'000;
    const TestSupport::TemporaryFolder temporary;
    const auto folderOf = [&](int number) { return temporary / std::to_string(number % folders); };
    for (int number = 0; number <= folders; ++number)
        fs::create_directory(number < folders ? folderOf(number) : temporary / "z");
    const auto delegate = std::make_shared<CountingDelegate>();
    const auto monitor = monitorOf(temporary.path());
    monitor->setDelegate(delegate);
    const double seconds = secondsOf([&] {
        for (int number = 0; number < files; ++number)
            TestSupport::writeFile(folderOf(number) / std::to_string(number), "1");
        fs::create_directory(temporary / "z" / "mark"); // the last of the last batch
        waitUntil([&] { return delegate->calls(temporary / "z" / "mark") > 0; });
    });
    int missing = 0;
    int most = 0;
    for (int number = 0; number < folders; ++number) {
        missing += delegate->calls(folderOf(number)) == 0 ? 1 : 0;
        most = std::max(most, delegate->calls(folderOf(number)));
    }
    std::printf("  %d files in %.1f s; count was lost %d times\n", files, seconds,
                delegate->calls(temporary.path()));
    const bool holds = report("Storm: changed folders without a call", missing, 0);
    return report("Storm: calls for a folder", most, seconds + 1) && holds;
}

} // namespace

long privateBytes() {
    return sumOfLines("/proc/self/smaps_rollup", "Private_Dirty:", false) * 1024;
}

bool measureMonitor(const fs::path& tree) {
    constexpr double kilobyte = 1024;
    auto monitor = monitorOf("/nowhere"); // what the process has once
    const auto before = privateBytes();
    monitor = monitorOf(tree);
    const auto bytes = static_cast<double>(privateBytes() - before);
    const auto folders = static_cast<double>(watches());
    std::printf("  %.0f folders, %.0f KB\n", folders, bytes / kilobyte);
    bool holds = report("Private memory of a watched folder", bytes / folders, 250, "B");
    monitor.reset();
    waitUntil([] { return watches() == 0; });
    holds = compareStart(tree) && holds;
    return raiseStorm() && holds;
}

} // namespace Benchmarks
