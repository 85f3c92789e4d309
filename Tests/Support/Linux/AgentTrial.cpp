#include "Tests/Support/Linux/AgentTrial.h"

#include "Tests/Support/Linux/ChildProcess.h"
#include "Tests/Support/WaitUntil.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <thread>
#include <utility>

namespace TestSupport {
namespace {

bool waitReadable(int descriptor, AgentTrial::Clock::time_point deadline) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - AgentTrial::Clock::now());
    pollfd poller{.fd = descriptor, .events = POLLIN, .revents = 0};
    return poll(&poller, 1, static_cast<int>(std::max<long>(left.count(), 0))) > 0;
}

int openNotifySocket(const std::filesystem::path& path) {
    const int descriptor = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.string().size() >= sizeof address.sun_path)
        throw std::runtime_error("too long for a socket: " + path.string());
    std::ranges::copy(path.string(), address.sun_path);
    if (bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        throw std::runtime_error("cannot listen at " + path.string());
    return descriptor;
}

/// The signals of the process, and the stack of each thread where there is a debugger.
void printWhatItIsAt(pid_t process) {
    const ChildProcess inspection({"sh", "-c",
                                   "grep -E '^(State|Sig|Shd)' /proc/$0/status;"
                                   "timeout 20 gdb -batch -p $0 -ex 'thread apply all bt'",
                                   std::to_string(process)});
    std::cerr << inspection.readAll();
}

} // namespace

AgentTrial::AgentTrial(std::filesystem::path agent)
    : agent_(std::move(agent)) {
    std::filesystem::create_directories(userAgents());
    for (const auto* name :
         {"LaunchAgents", "LaunchDaemons", "StartupItems", "PrivilegedHelperTools"})
        std::filesystem::create_directories(library() / name);
    std::filesystem::create_directory(elsewhere());
}

AgentTrial::~AgentTrial() {
    end(SIGKILL);
    closeOutput();
    close(notifySocket_);
}

std::vector<std::string> AgentTrial::makeEnvironment() const {
    std::map<std::string, std::string> all = {
        {"PATH", "/usr/bin:/bin"},
        {"LD_PRELOAD", "libnss_wrapper.so"},
        {"NSS_WRAPPER_PASSWD", folder_ / "passwd"},
        {"NSS_WRAPPER_GROUP", folder_ / "group"},
        {"NSS_WRAPPER_DISABLE_DEEPBIND", "1"}, // or a sanitizer stops the process
        {"CORBEL_LOCAL_LIBRARY", library()},
        {"NOTIFY_SOCKET", folder_ / "ready"},
        // The wrapper comes first where a sanitizer would be, which is no fault.
        {"ASAN_OPTIONS", "verify_asan_link_order=0"},
    };
    for (const auto& [name, value] : environment)
        all[name] = value;
    std::vector<std::string> list;
    list.reserve(all.size());
    for (const auto& [name, value] : all)
        list.push_back(std::string(name).append("=").append(value));
    return list;
}

bool AgentTrial::start() {
    return launch() && waitUntilReady();
}

bool AgentTrial::launch() {
    const auto home = "::" + this->home().string() + ":/bin/sh\n"; // also in a namespace, as root
    writeFile(folder_ / "passwd", "trial:x:" + std::to_string(getuid()) + ":" +
                                      std::to_string(getgid()) + home + "root:x:0:0" + home);
    writeFile(folder_ / "group", "trial:x:" + std::to_string(getgid()) + ":\n");
    std::filesystem::remove(folder_ / "ready");
    close(std::exchange(notifySocket_, openNotifySocket(folder_ / "ready")));
    std::array<int, 2> output{};
    if (pipe2(output.data(), O_CLOEXEC) != 0)
        return false;
    auto command = wrapper;
    command.push_back(agent_.string());
    sigset_t requests; // blocked, as careless parents leave them
    sigset_t before;
    sigemptyset(&requests);
    for (const int request : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&requests, request);
    pthread_sigmask(SIG_BLOCK, &requests, &before);
    process_ = startProcess(std::move(command), makeEnvironment(), output[1], true);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    close(output[1]);
    closeOutput();
    unread_.clear();
    output_ = output[0];
    return process_ != -1;
}

bool AgentTrial::waitUntilReady() const {
    const auto deadline = Clock::now() + patience;
    while (waitReadable(notifySocket_, deadline)) {
        std::array<char, 64> state{}; // also that of the one before, which is ending
        if (recv(notifySocket_, state.data(), state.size(), 0) > 0 &&
            std::string_view(state.data()).starts_with("READY=1"))
            return true;
    }
    return false;
}

bool AgentTrial::readMore(Clock::time_point deadline) {
    std::array<char, 4096> buffer{};
    if (!waitReadable(output_, deadline))
        return false;
    const auto count = read(output_, buffer.data(), buffer.size());
    readTime_ = Clock::now();
    if (count <= 0)
        return false;
    unread_.append(buffer.data(), static_cast<std::size_t>(count));
    return true;
}

std::optional<AgentTrial::Line> AgentTrial::nextLine(std::chrono::milliseconds deadline) {
    const auto end = Clock::now() + deadline;
    for (;;) {
        if (const auto length = unread_.find('\n'); length != std::string::npos) {
            Line line{.text = unread_.substr(0, length), .time = readTime_};
            unread_.erase(0, length + 1);
            return line;
        }
        if (!readMore(end))
            return std::nullopt;
    }
}

void AgentTrial::closeOutput() {
    if (output_ != -1)
        close(std::exchange(output_, -1));
}

std::optional<long> AgentTrial::waitUntilAtRest() const {
    constexpr auto longerThanAnyWait = std::chrono::milliseconds(1200);
    const auto deadline = Clock::now() + patience;
    for (long before = -1; Clock::now() < deadline;) {
        const long now = sumOverThreads("voluntary_ctxt_switches");
        if (now == before)
            return now;
        before = now;
        std::this_thread::sleep_for(longerThanAnyWait);
    }
    return std::nullopt;
}

long AgentTrial::sumOverThreads(std::string_view name) const {
    long sum = 0;
    const auto tasks = std::filesystem::path("/proc") / std::to_string(process_) / "task";
    for (const auto& task : std::filesystem::directory_iterator(tasks)) {
        if (restlessThreads.empty() || contentOf(task.path() / "comm") != restlessThreads + "\n")
            sum += readProcessNumber(task.path() / "status", name);
    }
    return sum;
}

long readProcessNumber(const std::filesystem::path& file, std::string_view name) {
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(std::string(name) + ":"))
            return std::stol(line.substr(name.size() + 1));
    }
    return -1;
}

std::optional<int> AgentTrial::end(int signal) {
    if (process_ == -1)
        return std::nullopt;
    kill(process_, signal);
    int status = 0;
    const bool hasEnded =
        waitUntil([&] { return waitpid(process_, &status, WNOHANG) == process_; }, patience / 2);
    if (!hasEnded) {
        printWhatItIsAt(process_);
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    process_ = -1;
    if (!hasEnded)
        return std::nullopt;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

void AgentTrial::save(const std::filesystem::path& path, std::string_view content) const {
    const auto beside = elsewhere() / "saving";
    writeFile(beside, content);
    std::filesystem::rename(beside, path);
}

std::string jobFile(std::string_view label, std::string_view extra) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
	<key>Label</key>
	<string>)" +
           std::string(label) + R"(</string>
	<key>ProgramArguments</key> <array> <string>/usr/bin/true</string> </array>
	<key>RunAtLoad</key> <true/>
)" + std::string(extra) +
           "</dict>\n</plist>\n";
}

} // namespace TestSupport
