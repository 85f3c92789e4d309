// How the agent bears time: a long rest, and a long stretch of work.

#include "Tests/Support/Linux/DesktopSession.h"
#include "Tools/Campaign/Campaign.h"
#include "Tools/Campaign/Desk.h"
#include "Tools/Campaign/Process.h"

#include <cstdio>
#include <set>
#include <thread>

namespace Campaign {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::minutes;
using std::chrono::seconds;

double minutesSince(Clock::time_point start) {
    return std::chrono::duration<double, std::ratio<60>>(Clock::now() - start).count();
}

// Fifty changes a second, none of a file whose last one may still be under way.
class Work {
public:
    explicit Work(minutes length)
        : length_(length) {}

    bool run() {
        if (!desk_.trial.start())
            return false;
        const auto start = Clock::now();
        auto nextSample = start + seconds(60); // what is needed for the first time is no growth
        for (auto due = start; due < start + length_; due += std::chrono::milliseconds(20)) {
            std::this_thread::sleep_until(due);
            change();
            while (const auto body = desk_.next(std::chrono::milliseconds(0)))
                receive(*body);
            if (Clock::now() < nextSample)
                continue;
            nextSample += seconds(2);
            memory_.emplace_back(minutesSince(start),
                                 stateOf(desk_.trial.process()).privateKilobytes);
        }
        while (!expected_.empty()) {
            const auto body = desk_.next(seconds(20));
            if (!body)
                break;
            receive(*body);
        }
        std::printf("work: %d changes in %.1f min, %zu lost, %d unexpected; private memory from "
                    "%.0f to %.0f KB, slope %.2f KB a minute\n",
                    changes_, minutesSince(start), expected_.size(), unexpected_,
                    memory_.empty() ? 0 : memory_.front().second,
                    memory_.empty() ? 0 : memory_.back().second, slope(memory_));
        return expected_.empty() && unexpected_ == 0;
    }

private:
    static constexpr int files = 500; // each has its turn every ten seconds

    void change() {
        const auto name = "org.example." + std::to_string(changes_ % files);
        const auto isNew = changes_++ < files;
        desk_.trial.save(desk_.trial.userAgents() / name,
                         TestSupport::jobFile(name, "<!--" + std::to_string(changes_) + "-->"));
        expected_.insert((isNew ? "New: " : "Modified: ") + ("~/Library/LaunchAgents/" + name));
    }

    void receive(const std::string& body) {
        const auto found = expected_.find(body);
        if (found != expected_.end()) {
            expected_.erase(found);
        } else {
            std::printf("unexpected: %s\n", body.c_str());
            ++unexpected_;
        }
    }

    const minutes length_;
    Desk desk_;
    int changes_ = 0;
    int unexpected_ = 0;
    std::multiset<std::string> expected_;
    std::vector<std::pair<double, double>> memory_;
};

} // namespace

bool work(minutes length) {
    return Work(length).run();
}

bool rest(minutes length) {
    const TestSupport::DesktopSession session;
    Desk desk;
    desk.trial.environment["DISPLAY"] = session.display();
    if (!desk.trial.start())
        return false;
    desk.trial.save(desk.trial.userAgents() / "org.example.one", "1");
    const auto before = desk.next(seconds(20)) ? desk.trial.waitUntilAtRest() : std::nullopt;
    if (!before)
        return false;
    const auto first = stateOf(desk.trial.process());
    std::this_thread::sleep_for(length);
    const auto last = stateOf(desk.trial.process());
    const auto wakeUps = desk.trial.sumOverThreads("voluntary_ctxt_switches") - *before;
    std::printf("rest: %ld min, %ld wake-ups, %.0f ms of processor time, private memory from %ld "
                "to %ld KB (resident %ld KB), descriptors %td to %td, threads %ld to %ld\n",
                static_cast<long>(length.count()), wakeUps,
                last.processorMilliseconds - first.processorMilliseconds, first.privateKilobytes,
                last.privateKilobytes, last.residentKilobytes, first.descriptors, last.descriptors,
                first.threads, last.threads);
    return wakeUps == 0 && last.descriptors == first.descriptors;
}

} // namespace Campaign
