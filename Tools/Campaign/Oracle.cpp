// Random work on the folders, and after each quiet moment the comparison with what a model says.

#include "Tools/Campaign/Campaign.h"
#include "Tools/Campaign/Desk.h"
#include "Tools/Campaign/JobModel.h"
#include "Tools/Campaign/Process.h"
#include "Tools/Campaign/RandomWork.h"

#include <linux/capability.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <mutex>
#include <thread>

namespace Campaign {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds agentWait{510};

struct Totals {
    int rounds = 0;
    int changes = 0;
    int notified = 0;
    int torn = 0;
    int faults = 0;
    double memorySlope = 0; ///< KB a minute, the steepest

    void add(const Totals& other) {
        rounds += other.rounds;
        changes += other.changes;
        notified += other.notified;
        torn += other.torn;
        faults += other.faults;
        memorySlope = std::max(memorySlope, other.memorySlope);
    }
};

/// One agent's rounds. A fault ends them.
class Oracle {
public:
    explicit Oracle(std::uint64_t seed)
        : seed_(seed)
        , random_(seed)
        , work_(desk_.trial, random_) {
        start();
    }

    bool isSound() const { return fault_.empty(); }

    void round() {
        ++totals_.rounds;
        work_.takeRecord();
        if (work_.below(6) == 0)
            editSettings();

        using Kind = std::pair<const char*, void (Oracle::*)()>;
        static constexpr std::array<Kind, 9> kinds = {{
            {"quick", &Oracle::workQuickly},
            {"quick", &Oracle::workQuickly},
            {"quick", &Oracle::workQuickly},
            {"quick", &Oracle::workQuickly},
            {"stopped", &Oracle::workWhileStopped},
            {"stopped", &Oracle::workWhileStopped},
            {"quiet", &Oracle::workQuietly},
            {"long", &Oracle::workLong},
            {"restart", &Oracle::restart},
        }};
        const auto& [name, play] = kinds.at(work_.below(kinds.size()));
        (this->*play)();
        if (!isSound()) {
            std::printf("seed %llu, round %d (%s): %s\n%s", static_cast<unsigned long long>(seed_),
                        totals_.rounds, name, fault_.c_str(),
                        ("  settings " + record_ + "\n" + work_.takeRecord()).c_str());
        }
        if (totals_.rounds % 4 == 0) {
            memory_.emplace_back(
                std::chrono::duration<double, std::ratio<60>>(Clock::now() - started_).count(),
                stateOf(desk_.trial.process()).privateKilobytes);
        }
    }

    Totals totals() const {
        auto totals = totals_;
        totals.changes = work_.changes();
        totals.faults = isSound() ? 0 : 1;
        totals.memorySlope = slope(memory_);
        return totals;
    }

private:
    void fail(const std::string& what) {
        if (isSound())
            fault_ = what;
    }

    void start() {
        work_.noteWatchedFolders();
        if (!desk_.trial.start())
            fail("the agent did not start");
        known_ = readFolders(work_.folders());
        memory_.clear();
        started_ = Clock::now();
    }

    void editSettings() {
        auto names = RandomWork::labels;
        names.insert(names.end(), {"a.plist", "c"});
        filter_ = {.exceptions = work_.someOf(names),
                   .excludePrefixes = work_.someOf({"Org.Example.", "NET", "e.pl"})};
        const auto folder = desk_.trial.home() / ".config/tarnwell";
        std::filesystem::create_directories(folder);
        record_ = filter_.propertyList();
        desk_.trial.save(folder / "QX42K7M3ZP.com.tarnwell.Vesper.plist", record_);
    }

    // All within the wait that the first change starts: one pass sees the whole.
    void workQuickly() {
        const auto first = Clock::now();
        for (auto count = work_.below(8); count > 0; --count)
            work_.change();
        finish(Clock::now() - first < agentWait - milliseconds(60));
    }

    // However long the agent stands still, it sees the whole afterwards.
    void workWhileStopped() {
        kill(desk_.trial.process(), SIGSTOP);
        for (auto count = work_.below(40); count > 0; --count)
            work_.change();
        if (work_.below(2) == 0)
            renewService();
        finish(true, [this] { kill(desk_.trial.process(), SIGCONT); });
    }

    // Nobody notices any of it until an entry of a folder is written.
    void workQuietly() {
        for (auto count = 1 + work_.below(4); count > 0; --count)
            work_.changeQuietly();
        if (const auto body = desk_.next(seconds(1)))
            fail("notified without an event: " + *body);
    }

    // Any number of passes may see it in any parts.
    void workLong() {
        const auto end = Clock::now() + milliseconds(1500);
        while (Clock::now() < end) {
            work_.addFile();
            std::this_thread::sleep_for(milliseconds(work_.below(100)));
            if (work_.below(12) == 0)
                renewService();
            if (work_.below(12) == 0) {
                kill(desk_.trial.process(), SIGSTOP);
                std::this_thread::sleep_for(milliseconds(work_.below(300)));
                kill(desk_.trial.process(), SIGCONT);
            }
        }
        finish(true);
    }

    void renewService() {
        desk_.service->vanish();
        desk_.service->comeBack({"actions", "body"});
        isServiceNew_ = true;
    }

    // With the bus or alone; what happens meanwhile becomes the new baseline.
    void restart() {
        if (work_.below(2) == 0) {
            desk_.bus->end();
            if (desk_.trial.end(0) != EXIT_SUCCESS)
                fail("the end of the bus did not end the agent well");
            desk_.renewSession();
        } else if (const auto code = desk_.trial.end(); code != EXIT_SUCCESS) {
            fail("the agent " +
                 (code ? "ended with " + std::to_string(*code) : std::string("did not end")));
        }
        for (auto count = work_.below(8); count > 0; --count)
            work_.change();
        start();
    }

    void finish(bool isWhole, const std::function<void()>& goOn = [] {}) {
        const auto marker = work_.addMarker();
        const auto after = readFolders(work_.folders());
        auto expected = compare(known_, after, filter_, desk_.trial.home());
        expected.mayRepeat = std::exchange(isServiceNew_, false);
        known_ = after;
        goOn();
        if (isWhole) {
            check(expected);
            return;
        }
        ++totals_.torn; // more than one pass: what the first saw is unknown
        waitFor(marker);
    }

    void check(Expectation& expected) {
        const auto deadline = Clock::now() + seconds(30);
        std::string surplus;
        const auto receive = [&](const std::optional<std::string>& body) {
            if (body && !expected.fulfil(*body))
                surplus += "  " + *body + "\n";
            totals_.notified += body ? 1 : 0;
            return body.has_value();
        };
        while (Clock::now() < deadline &&
               (receive(desk_.next(milliseconds(100))) || !expected.isFulfilled())) {
        }
        // What was noticed late leads to a further pass, which finds nothing.
        while (receive(desk_.next(agentWait + milliseconds(100)))) {
        }
        if (!surplus.empty() || !expected.isFulfilled())
            fail("lost\n" + expected.text() + "surplus\n" + surplus + "work");
    }

    void waitFor(const std::filesystem::path& marker) {
        const auto name = "/" + marker.filename().string();
        for (auto body = desk_.next(seconds(30)); body && !body->ends_with(name);)
            body = desk_.next(seconds(30));
        while (desk_.next(3 * agentWait)) {
        }
    }

    const std::uint64_t seed_;
    std::mt19937_64 random_;
    Desk desk_;
    RandomWork work_;
    Filter filter_;
    bool isServiceNew_ = false;
    Snapshot known_;
    Totals totals_;
    std::string record_; ///< of the last settings
    std::string fault_;
    Clock::time_point started_;
    std::vector<std::pair<double, double>> memory_;
};

// Even where the campaign runs as root, what permissions forbid is forbidden to the agent.
void giveUpRightsBeyondPermissions() {
    for (const int right : {CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH})
        prctl(PR_CAPBSET_DROP, right);
}

bool play(const std::vector<std::uint64_t>& seeds, const std::function<bool(int)>& goesOn) {
    giveUpRightsBeyondPermissions();
    std::mutex mutex;
    Totals all;
    std::vector<std::thread> agents;
    agents.reserve(seeds.size());
    for (const auto seed : seeds) {
        agents.emplace_back([&, seed] {
            Oracle oracle(seed);
            for (int round = 0; oracle.isSound() && goesOn(round); ++round)
                oracle.round();
            const std::lock_guard lock(mutex);
            all.add(oracle.totals());
        });
    }
    for (auto& agent : agents)
        agent.join();
    std::printf("oracle: %d rounds, %d changes, %d notifications, %d rounds torn by the machine, "
                "%d agents with a fault; steepest slope of private memory %.1f KB a minute\n",
                all.rounds, all.changes, all.notified, all.torn, all.faults, all.memorySlope);
    return all.faults == 0;
}

std::vector<std::uint64_t> freshSeeds() {
    constexpr int agentsSideBySide = 6; // most of a round is waiting
    std::random_device device;
    std::vector<std::uint64_t> seeds(agentsSideBySide);
    for (auto& seed : seeds)
        seed = device();
    return seeds;
}

} // namespace

bool oracle(int rounds, std::optional<std::uint64_t> seed) {
    const auto seeds = seed ? std::vector{*seed} : freshSeeds();
    return play(seeds, [each = rounds / static_cast<int>(seeds.size())](int round) {
        return round < each;
    });
}

bool soak(std::chrono::minutes length) {
    return play(freshSeeds(), [end = Clock::now() + length](int) { return Clock::now() < end; });
}

} // namespace Campaign
