#include "Benchmarks/Worker.h"
#include "Tests/Support/Linux/AgentTrial.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/NotificationService.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>

namespace Benchmarks {
namespace {

using TestSupport::AgentTrial;

std::shared_ptr<AgentTrial> trialWithJobs(int jobs) {
    auto trial = std::make_shared<AgentTrial>(CORBEL_AGENT);
    for (int job = 0; job < jobs; ++job) {
        const auto name = "org.example.job" + std::to_string(job);
        TestSupport::writeFile(trial->userAgents() / (name + ".plist"), TestSupport::jobFile(name));
    }
    return trial;
}

double processorSeconds(pid_t process) {
    clockid_t clock{};
    timespec time{};
    require(clock_getcpuclockid(process, &clock) == 0 && clock_gettime(clock, &time) == 0,
            "no processor time");
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// launch JOBS: until the agent says that it watches.
Turn prepareLaunch(const std::vector<std::string>& arguments) {
    auto trial = trialWithJobs(std::stoi(arguments.at(0)));
    return [trial] {
        bool isReady = false;
        const auto seconds = secondsOf([&] { isReady = trial->start(); });
        require(isReady, "the agent did not start");
        trial->end();
        return Figures{{"seconds", seconds}};
    };
}

/// event: from the moment that a job is in its place until its notification is printed.
Turn prepareEvent(const std::vector<std::string>& /*arguments*/) {
    auto trial = trialWithJobs(0);
    require(trial->start(), "the agent did not start");
    return [trial, number = 0]() mutable {
        const auto name = "org.example.job" + std::to_string(++number);
        const auto start = AgentTrial::Clock::now();
        trial->save(trial->userAgents() / name, TestSupport::jobFile(name));
        const auto line = trial->nextLine();
        require(line && line->text.ends_with(name), "a change was not notified");
        return Figures{{"seconds", std::chrono::duration<double>(line->time - start).count()}};
    };
}

/// Counts the passes by the folder that each of them opens.
class PassCount {
public:
    explicit PassCount(const std::filesystem::path& folder) {
        inotify_add_watch(descriptor_, folder.c_str(), IN_OPEN);
    }

    ~PassCount() { close(descriptor_); }

    PassCount(const PassCount&) = delete;
    PassCount& operator=(const PassCount&) = delete;
    PassCount(PassCount&&) = delete;
    PassCount& operator=(PassCount&&) = delete;

    double take() const {
        std::array<inotify_event, 256> records{}; // without names
        const auto bytes = read(descriptor_, records.data(), sizeof records);
        return bytes > 0 ? static_cast<double>(bytes) / sizeof(inotify_event) : 0;
    }

private:
    int descriptor_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
};

/// storm EVENTS: so many events of one watched folder, as fast as they can be made, which leave
/// nothing behind.
Turn prepareStorm(const std::vector<std::string>& arguments) {
    auto trial = trialWithJobs(0);
    require(trial->start(), "the agent did not start");
    const auto passes = std::make_shared<PassCount>(trial->library() / "StartupItems");
    const auto source = trial->elsewhere() / "source";
    TestSupport::writeFile(source, "1");
    return [=, events = std::stoi(arguments.at(0))] {
        require(trial->waitUntilAtRest().has_value(), "the agent does not rest");
        passes->take();
        const auto before = processorSeconds(trial->process());
        const auto target = trial->userAgents() / "org.example.storm";
        const auto seconds = secondsOf([&] {
            for (int event = 0; event < events; event += 2) {
                require(link(source.c_str(), target.c_str()) == 0, "link");
                unlink(target.c_str());
            }
        });
        require(trial->waitUntilAtRest().has_value(), "the agent does not rest");
        return Figures{{"seconds", seconds},
                       {"processor", processorSeconds(trial->process()) - before},
                       {"passes", passes->take()}};
    };
}

/// changes JOBS: from the first of so many new jobs that come into their place, as fast as they can
/// be moved, until a notification service has been given the last of their notifications.
Turn prepareChanges(const std::vector<std::string>& arguments) {
    const auto bus = std::make_shared<TestSupport::BusDaemon>();
    const auto service = std::make_shared<TestSupport::NotificationService>(bus->address());
    auto trial = trialWithJobs(0);
    trial->environment["DBUS_SESSION_BUS_ADDRESS"] = bus->address();
    require(trial->start(), "the agent did not start");
    return [bus, service, trial, jobs = std::stoi(arguments.at(0))] {
        const auto jobsFolder = trial->userAgents();
        const auto nameOf = [](int job) { return "org.example.job" + std::to_string(job); };
        for (int job = 0; job < jobs; ++job) // unlike each other
            TestSupport::writeFile(trial->elsewhere() / nameOf(job), nameOf(job));
        const auto before = processorSeconds(trial->process());
        const auto seconds = secondsOf([&] {
            for (int job = 0; job < jobs; ++job)
                std::filesystem::rename(trial->elsewhere() / nameOf(job), jobsFolder / nameOf(job));
            for (int job = 0; job < jobs; ++job)
                require(service->next().has_value(), "a change was not notified");
        });
        const auto processor = processorSeconds(trial->process()) - before;
        for (int job = 0; job < jobs; ++job)
            std::filesystem::remove(jobsFolder / nameOf(job));
        require(service->next() && trial->waitUntilAtRest(), "the agent does not rest");
        while (service->next(std::chrono::milliseconds(0))) { // of deletions in several passes
        }
        return Figures{{"seconds", seconds}, {"processor", processor}};
    };
}

/// rest SECONDS JOBS: what the agent holds and does while nothing happens, after a pass.
Turn prepareRest(const std::vector<std::string>& arguments) {
    auto trial = trialWithJobs(std::stoi(arguments.at(1)));
    require(trial->start(), "the agent did not start");
    return [trial, length = std::chrono::seconds(std::stoi(arguments.at(0)))] {
        trial->save(trial->userAgents() / "org.example.last", "1");
        trial->nextLine();
        const auto before = trial->waitUntilAtRest();
        require(before.has_value(), "the agent does not rest");
        std::this_thread::sleep_for(length); // the very thing that is measured
        const auto process = std::to_string(trial->process());
        const auto wakeUps = trial->sumOverThreads("voluntary_ctxt_switches") - *before;
        const auto resident =
            TestSupport::readProcessNumber("/proc/" + process + "/smaps_rollup", "Rss") * 1024;
        std::filesystem::remove(trial->userAgents() / "org.example.last");
        return Figures{{"wakeUps", static_cast<double>(wakeUps)},
                       {"resident", static_cast<double>(resident)},
                       {"private", privateBytes(process)}};
    };
}

} // namespace

Works agentWorks() {
    return {{"launch", prepareLaunch},
            {"event", prepareEvent},
            {"storm", prepareStorm},
            {"changes", prepareChanges},
            {"rest", prepareRest}};
}

} // namespace Benchmarks
