// The faults that a system can have, over and over, in one table with those of a session: what is
// changed meanwhile and afterwards has to be notified all the same.

#include "Tests/Support/Linux/HungFile.h"
#include "Tests/Support/Linux/HungFolder.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tools/Campaign/Campaign.h"
#include "Tools/Campaign/FaultTrial.h"
#include "Tools/Campaign/SessionFaults.h"

#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <list>

namespace Campaign {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using TestSupport::writeFile;

void queueOverflow(FaultTrial& trial, int times) {
    constexpr int moreThanTheQueueHolds = 20'000; // of two events each; it holds 16,384
    if (!trial.start())
        return;
    const auto& desk = trial.desk.trial;
    for (int time = 0; time < times; ++time) {
        kill(desk.process(), SIGSTOP);
        for (int file = 0; file < moreThanTheQueueHolds; ++file) {
            writeFile(desk.userAgents() / "brief", "");
            fs::remove(desk.userAgents() / "brief");
        }
        const auto path = trial.save(desk.userAgents());
        kill(desk.process(), SIGCONT);
        trial.awaitNotified(path);
    }
}

// Of six instances that the agent takes, the folders have the first five.
void instanceLimit(FaultTrial& trial, int times) {
    for (int time = 0; time < times; ++time) {
        if (!trial.start({"unshare", "--user", "--map-root-user", "sh", "-c",
                          "echo 5 >/proc/sys/user/max_inotify_instances; exec \"$0\""}))
            return;
        for (const auto* name : {"LaunchAgents", "LaunchDaemons", "PrivilegedHelperTools"})
            trial.expectNotified(trial.desk.trial.library() / name);
        trial.expectEnd();
    }
}

void descriptorLimit(FaultTrial& trial, int times) {
    if (!trial.start({"sh", "-c", "ulimit -n 40; exec \"$0\""}))
        return;
    for (int time = 0; time < times; ++time)
        trial.expectNotified();
    trial.expectEnd();
}

void addressSpaceLimit(FaultTrial& trial, int times) {
    const auto large = trial.desk.trial.userAgents() / "large";
    if (!trial.start({"sh", "-c", "ulimit -v 600000; exec \"$0\""}))
        return;
    for (int time = 0; time < times; ++time) {
        std::string label;
        label.resize(60'000'000, static_cast<char>('a' + time % 26));
        trial.desk.trial.save(large, TestSupport::jobFile(label));
        trial.expectNotified();
    }
    trial.expectEnd();
}

// In a mount namespace of the campaign's own.
void fullDisk(FaultTrial& trial, int times) {
    const auto folder = trial.desk.trial.userAgents();
    if (unshare(CLONE_NEWNS) != 0 ||
        mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=64k") != 0) {
        trial.expect(false);
        return;
    }
    trial.desk.trial.environment["XDG_CONFIG_HOME"] = folder;
    if (trial.start({"sh", "-c", "exec \"$0\" >/dev/full"})) {
        for (int time = 0; time < times; ++time) {
            const auto path = folder / ("filling-" + std::to_string(time));
            std::ofstream(path) << path << std::string(1'000'000, 'x'); // as far as it goes
            trial.awaitNotified(path);
            trial.expectNotified(trial.desk.trial.library() / "StartupItems");
            fs::remove(path);
        }
        trial.expectEnd();
    }
    umount2(folder.c_str(), MNT_DETACH);
}

void settingsStorm(FaultTrial& trial, int times) {
    const auto file =
        trial.desk.trial.home() / ".config/tarnwell/QX42K7M3ZP.com.tarnwell.Vesper.plist";
    fs::create_directories(file.parent_path());
    if (!trial.start())
        return;
    for (int time = 0; time < times; ++time) {
        const Meanwhile storm([&, number = 0]() mutable {
            TestSupport::replaceFile(file, "<plist><dict><key>Exceptions</key><array><string>" +
                                               std::to_string(++number) +
                                               "</string></array></dict></plist>");
            std::this_thread::sleep_for(milliseconds(1));
        });
        for (int change = 0; change < 5; ++change)
            trial.expectNotified();
    }
    trial.expectEnd();
}

void fileNeverAnswers(FaultTrial& trial, int times) {
    const auto path = trial.desk.trial.userAgents() / "hung";
    writeFile(path, "hung");
    if (!trial.start())
        return;
    for (int time = 0; time < times; ++time) {
        TestSupport::HungFile hung(path);
        trial.expect(hung.isHung());
        trial.expectNotified();
        trial.expectNotified();
        hung.answer();
        trial.expectNotified();
    }
    trial.expectEnd();
}

void folderHangsAtStart(FaultTrial& trial, int times) {
    const auto& desk = trial.desk.trial;
    for (int time = 0; time < times; ++time) {
        const TestSupport::HungFolder hung(desk.library() / "StartupItems");
        trial.expect(hung.isHung());
        if (!trial.start())
            return;
        trial.expectNotified();
        trial.expectNotified(desk.library() / "LaunchDaemons");
        trial.expectEnd();
    }
}

void settingsHangAtStart(FaultTrial& trial, int times) {
    const auto file =
        trial.desk.trial.home() / ".config/tarnwell/QX42K7M3ZP.com.tarnwell.Vesper.plist";
    fs::create_directories(file.parent_path());
    writeFile(file, "<plist><dict/></plist>");
    for (int time = 0; time < times; ++time) {
        const TestSupport::HungFile hung(file);
        trial.expect(hung.isHung());
        if (!trial.start())
            return;
        trial.expectNotified();
        trial.expectNotified();
        trial.expectEnd();
    }
}

void manyFilesNeverAnswer(FaultTrial& trial, int times) {
    constexpr int files = 40;
    for (int time = 0; time < times; ++time) {
        std::list<TestSupport::HungFile> hung;
        for (int file = 0; file < files; ++file) {
            const auto path = trial.desk.trial.library() / "LaunchAgents" / std::to_string(file);
            writeFile(path, "hung");
            trial.expect(hung.emplace_back(path).isHung());
        }
        if (!trial.start())
            return;
        trial.expectNotified();
        trial.expectNotified();
        trial.expectEnd();
    }
}

void fileGrows(FaultTrial& trial, int times) {
    if (!trial.start())
        return;
    for (int time = 0; time < times; ++time) {
        const auto path = trial.desk.trial.userAgents() / "growing";
        {
            std::ofstream file(path);
            const Meanwhile growth([&] {
                file << std::string(1'000'000, 'x') << std::flush;
                std::this_thread::sleep_for(milliseconds(10));
            });
            for (int change = 0; change < 3; ++change)
                trial.expectNotified();
        }
        fs::remove(path);
    }
    trial.expectEnd();
}

void noHome(FaultTrial& trial, int times) {
    for (int time = 0; time < times; ++time) {
        if (time % 2 == 1)
            trial.desk.trial.environment["HOME"] = "/nonexistent";
        if (!trial.start())
            return;
        trial.expectNotified();
        trial.expectEnd();
    }
}

void noPasswdEntry(FaultTrial& trial, int times) {
    trial.desk.trial.environment["NSS_WRAPPER_PASSWD"] = "/dev/null";
    for (int time = 0; time < times && trial.start(); ++time) {
        trial.expectNotified(trial.desk.trial.library() / "LaunchDaemons");
        trial.expectEnd();
    }
}

void signalsBlocked(FaultTrial& trial, int times) {
    for (int time = 0; time < times; ++time) {
        if (!trial.start({"/usr/bin/python3", "-c",
                          "import os, signal, sys\n"
                          "signal.pthread_sigmask(signal.SIG_BLOCK, range(1, 32))\n"
                          "os.execv(sys.argv[1], sys.argv[1:])"}))
            return;
        trial.expectNotified();
        trial.expectEnd(std::array{SIGTERM, SIGINT, SIGHUP}.at(static_cast<std::size_t>(time) % 3));
    }
}

void startsAndStops(FaultTrial& trial, int times) {
    for (int time = 0; time < times && trial.start(); ++time)
        trial.expectEnd();
}

struct Fault {
    const char* name;
    void (*meet)(FaultTrial& trial, int times);
    int times;
};

constexpr std::array faults = {
    Fault{.name = "event queue overflows", .meet = queueOverflow, .times = 10},
    Fault{.name = "no inotify instance left", .meet = instanceLimit, .times = 20},
    Fault{.name = "40 descriptors", .meet = descriptorLimit, .times = 20},
    Fault{
        .name = "600 MB of address space, labels of 60 MB", .meet = addressSpaceLimit, .times = 20},
    Fault{.name = "full disk, full standard output", .meet = fullDisk, .times = 20},
    Fault{.name = "bus ends", .meet = SessionFaults::busEnds, .times = 50},
    Fault{
        .name = "service goes and comes", .meet = SessionFaults::serviceGoesAndComes, .times = 50},
    Fault{.name = "service hangs", .meet = SessionFaults::serviceHangs, .times = 20},
    Fault{.name = "service floods and lies",
          .meet = SessionFaults::serviceFloodsAndLies,
          .times = 10},
    Fault{
        .name = "X server hangs and goes", .meet = SessionFaults::displayHangsAndGoes, .times = 10},
    Fault{.name = "settings replaced 1000 times a second", .meet = settingsStorm, .times = 5},
    Fault{.name = "file never answers", .meet = fileNeverAnswers, .times = 10},
    Fault{.name = "folder hangs at start", .meet = folderHangsAtStart, .times = 20},
    Fault{.name = "hung settings at start", .meet = settingsHangAtStart, .times = 20},
    Fault{.name = "40 files never answer", .meet = manyFilesNeverAnswer, .times = 10},
    Fault{.name = "file grows for ever", .meet = fileGrows, .times = 5},
    Fault{
        .name = "standard output is a full pipe", .meet = SessionFaults::outputIsFull, .times = 10},
    Fault{.name = "no HOME, or one that is not there", .meet = noHome, .times = 20},
    Fault{.name = "no passwd entry", .meet = noPasswdEntry, .times = 20},
    Fault{.name = "signals blocked at start", .meet = signalsBlocked, .times = 30},
    Fault{.name = "starts and stops", .meet = startsAndStops, .times = 300},
};

} // namespace

bool meetFaults(const std::string& part) {
    bool isAllWell = true;
    for (const auto& fault : faults) {
        if (std::string_view(fault.name).find(part) == std::string_view::npos)
            continue;
        FaultTrial trial;
        fault.meet(trial, fault.times);
        std::printf("| %s | %d | %d | %d |\n", fault.name, fault.times, trial.changes, trial.lost);
        std::fflush(stdout);
        isAllWell = isAllWell && trial.lost == 0;
    }
    return isAllWell;
}

} // namespace Campaign
