#include "Benchmarks/Worker.h"
#include "CorbelKit/Monitors/FileSystemMonitor.h"
#include "Tests/Support/WaitUntil.h"
#include "Vesper_Pro_Agent/JobComparison.h"
#include "Vesper_Pro_Agent/JobScanner.h"

#include <filesystem>
#include <fstream>
#include <future>
#include <memory>

namespace Benchmarks {
namespace {

using Platform::URL;
using Vesper_Pro_Agent::JobScanner;
using Vesper_Pro_Agent::JobSnapshot;

using Snapshot = std::shared_ptr<const JobSnapshot>;

URL folderURL(const std::string& path) {
    return URL::file(path, URL::DirectoryHint::isDirectory);
}

Snapshot scan(JobScanner& scanner, const Snapshot& last) {
    std::promise<JobSnapshot> jobs;
    scanner.scan(
        last, [&](Vesper_Pro_Agent::ScanResult found) { jobs.set_value(std::move(found.jobs)); });
    return std::make_shared<const JobSnapshot>(jobs.get_future().get());
}

/// pass HISTORY FOLDER...: a pass over the folders as the agent makes it. History says what became
/// of the jobs since the pass before: unchanged, renamed, modified, deleted, or new.
Turn preparePass(const std::vector<std::string>& arguments) {
    const auto& history = arguments.at(0);
    std::vector<URL> folders;
    for (std::size_t index = 1; index < arguments.size(); ++index)
        folders.push_back(folderURL(arguments[index]));
    auto scanner = std::make_shared<JobScanner>(folders, [] {});
    const auto nowhere = std::make_shared<JobScanner>(std::vector<URL>(), [] {});
    const auto now = scan(*scanner, std::make_shared<JobSnapshot>());
    JobSnapshot::Jobs before;
    for (const auto& job : *now) {
        before.emplace_back(job.path, job.copy());
        if (history == "renamed")
            before.back().first += '~';
        if (history == "modified")
            before.back().second.checksum[0] ^= std::byte{1};
    }
    if (history == "new")
        before.clear();
    const Snapshot last = std::make_shared<JobSnapshot>(std::move(before));
    const auto jobs = static_cast<double>(now->size());
    return [=, current = history == "deleted" ? nowhere : scanner] {
        std::size_t changes = 0;
        const auto seconds =
            secondsOf([&] { changes = compareJobs(*last, *scan(*current, last)).size(); });
        require(static_cast<double>(changes) ==
                    (history == "unchanged" || history == "renamed" ? 0 : jobs),
                "a pass found other changes than there are");
        return Figures{{"seconds", seconds}, {"jobs", jobs}};
    };
}

std::size_t watches() {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fdinfo")) {
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);)
            count += line.starts_with("inotify wd:") ? 1 : 0;
    }
    return count;
}

/// tree FOLDER: the start of a monitor of the tree.
Turn prepareTree(const std::vector<std::string>& arguments) {
    const auto monitorOf = [](const std::string& path) {
        return CorbelKit::FileSystemMonitor::make(folderURL(path));
    };
    monitorOf("/nowhere"); // what the process has once
    return [path = arguments.at(0), monitorOf] {
        const auto before = privateBytes();
        auto monitor = monitorOf("/nowhere");
        const auto seconds = secondsOf([&] { monitor = monitorOf(path); });
        const auto bytes = privateBytes() - before;
        const auto folders = static_cast<double>(watches());
        monitor.reset();
        require(TestSupport::waitUntil([] { return watches() == 0; }), "watches remain");
        return Figures{{"seconds", seconds}, {"folders", folders}, {"bytes", bytes}};
    };
}

} // namespace

Works passWorks() {
    return {{"pass", preparePass}, {"tree", prepareTree}};
}

} // namespace Benchmarks
