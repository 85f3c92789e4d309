#include "Benchmarks/Benchmarks.h"
#include "Benchmarks/Measurement.h"
#include "Platform/URL.h"
#include "Tests/Support/Linux/AgentTrial.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Vesper_Pro_Agent/JobComparison.h"
#include "Vesper_Pro_Agent/JobScanner.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <memory>
#include <string>
#include <vector>

namespace Benchmarks {
namespace {

using Platform::URL;
using Vesper_Pro_Agent::JobSnapshot;
namespace fs = std::filesystem;

constexpr int rounds = 9;

// A folder of job files and, if wanted, one of helper tools.
class JobFiles {
public:
    JobFiles(std::size_t jobs, std::size_t tools, std::size_t toolSize) {
        fs::create_directory(folder_ / "jobs");
        fs::create_directory(folder_ / "tools");
        for (std::size_t job = 0; job < jobs; ++job) {
            add("jobs/org.example.job" + std::to_string(job) + ".plist",
                TestSupport::jobFile("org.example.job" + std::to_string(job)));
        }
        for (std::size_t tool = 0; tool < tools; ++tool)
            add("tools/org.example.tool" + std::to_string(tool), noise(toolSize, tool));
    }

    std::vector<URL> folders() const {
        return {URL::file((folder_ / "jobs").string(), URL::DirectoryHint::isDirectory),
                URL::file((folder_ / "tools").string(), URL::DirectoryHint::isDirectory)};
    }

    const std::vector<std::string>& paths() const { return paths_; }

    JobSnapshot scan(const JobSnapshot& last) const {
        Vesper_Pro_Agent::JobScanner scanner(folders(), [] {});
        std::promise<JobSnapshot> jobs;
        scanner.scan(
            std::shared_ptr<const JobSnapshot>(&last, [](const auto*) {}),
            [&](Vesper_Pro_Agent::ScanResult found) { jobs.set_value(std::move(found.jobs)); });
        return jobs.get_future().get();
    }

    // One pass as the agent makes it, with what it saw last time.
    std::size_t pass(JobSnapshot& last) const {
        auto jobs = scan(last);
        const auto changes = Vesper_Pro_Agent::compareJobs(last, jobs);
        last = std::move(jobs);
        return changes.size();
    }

private:
    void add(const std::string& name, const std::string& content) {
        TestSupport::writeFile(folder_ / name, content);
        paths_.push_back((folder_ / name).string());
    }

    static std::string noise(std::size_t size, std::uint64_t seed) {
        std::string bytes = "\xCF\xFA\xED\xFE"; // as compiled tools begin
        bytes.reserve(size);
        for (std::uint64_t state = seed * 2 + 1; bytes.size() < size;) {
            state = state * 6364136223846793005U + 1442695040888963407U;
            bytes += static_cast<char>(state >> 56);
        }
        return bytes;
    }

    TestSupport::TemporaryFolder folder_;
    std::vector<std::string> paths_;
};

void require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "The benchmark itself failed: %s\n", what);
        std::exit(2);
    }
}

void runOpenssl(const std::vector<std::string>& paths) {
    std::vector<std::string> words = {"openssl", "dgst", "-sha256"};
    words.insert(words.end(), paths.begin(), paths.end());
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (auto& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    int status = -1;
    require(posix_spawnp(&process, "openssl", &actions, nullptr, arguments.data(), environ) == 0 &&
                waitpid(process, &status, 0) == process && status == 0,
            "openssl");
    posix_spawn_file_actions_destroy(&actions);
}

bool comparePassWithOpenssl(const std::string& what, const JobFiles& files, double limit) {
    JobSnapshot last;
    files.pass(last);
    require(last.size() == files.paths().size(), "a file was not seen");
    const auto times =
        timeInTurns({[&] { require(files.pass(last) == 0, "a change where there was none"); },
                     [&] { runOpenssl(files.paths()); }},
                    rounds);
    std::printf("  pass %.1f ms, openssl dgst -sha256 %.1f ms\n", times[0].count() * 1e3,
                times[1].count() * 1e3);
    return report(what + ", against openssl", times[0] / times[1], limit);
}

// The same files, all of them under new names.
JobSnapshot renamed(const JobSnapshot& jobs) {
    JobSnapshot::Jobs result;
    for (const auto& job : jobs)
        result.emplace_back(std::string(job.path) + ".renamed", job.copy());
    return JobSnapshot(result);
}

bool compareSizes(const JobFiles& few, const JobFiles& many) {
    JobSnapshot lastOfFew;
    JobSnapshot lastOfMany;
    few.pass(lastOfFew);
    many.pass(lastOfMany);
    const auto fewRenamed = renamed(lastOfFew);
    const auto manyRenamed = renamed(lastOfMany);
    const auto passAfterRename = [](const JobFiles& files, const JobSnapshot& last) {
        const auto jobs = files.scan(last);
        require(Vesper_Pro_Agent::compareJobs(last, jobs).empty(), "a rename is no change");
    };
    const auto times = timeInTurns({[&] { few.pass(lastOfFew); }, [&] { many.pass(lastOfMany); },
                                    [&] { passAfterRename(few, fewRenamed); },
                                    [&] { passAfterRename(many, manyRenamed); }},
                                   rounds);
    const bool plainHolds =
        report("Ten times the files, unchanged: cost of a pass", times[1] / times[0], 11);
    return report("Ten times the files, all renamed: cost of a pass", times[3] / times[2], 11) &&
           plainHolds;
}

} // namespace

bool measurePasses() {
    const JobFiles mixed(1000, 16, std::size_t{16} << 20);
    bool holds = comparePassWithOpenssl("1,000 jobs and 256 MB of tools", mixed, 0.75);
    const JobFiles small(10'000, 0, 0);
    holds = comparePassWithOpenssl("10,000 small jobs", small, 1) && holds;
    const JobFiles few(1000, 0, 0);
    return compareSizes(few, small) && holds;
}

} // namespace Benchmarks
