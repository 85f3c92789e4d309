#include "Platform/Subprocess.h"

#include "Platform/POSIX/ChildProcess.h"
#include "Platform/POSIX/FileSystemPath.h"
#include "Platform/POSIX/SystemError.h"

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

extern "C" char**
    environ; // NOLINT(readability-redundant-declaration): not every system's header has it

namespace Platform {
namespace {

/// Texts in the form in which a process takes them.
class TextVector {
public:
    void add(std::string text) { texts_.push_back(std::move(text)); }

    /// Whether the process would see one of the texts cut short.
    bool holdsNUL() const {
        return std::ranges::any_of(
            texts_, [](const auto& text) { return text.find('\0') != std::string::npos; });
    }

    /// Valid until the next change.
    char* const* pointers() {
        pointers_.clear();
        for (auto& text : texts_)
            pointers_.push_back(text.data());
        pointers_.push_back(nullptr);
        return pointers_.data();
    }

private:
    std::vector<std::string> texts_;
    std::vector<char*> pointers_;
};

TextVector argumentsOf(const Subprocess& subprocess, const std::string& path) {
    TextVector arguments;
    arguments.add(path);
    for (const auto& argument : subprocess.arguments)
        arguments.add(argument);
    return arguments;
}

TextVector environmentOf(const Subprocess& subprocess) {
    TextVector environment;
    if (subprocess.environment) {
        for (const auto& [name, value] : *subprocess.environment)
            environment.add(std::string(name).append("=").append(value));
    }
    return environment;
}

/// The descriptors of the started process.
class FileActions {
public:
    FileActions() { posix_spawn_file_actions_init(&actions_); }

    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }

    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;
    FileActions(FileActions&&) = delete;
    FileActions& operator=(FileActions&&) = delete;

    /// Zero or an `errno` value.
    int setStandardStreams(const std::array<int, 3>& descriptors) {
        constexpr int firstOther = 3;
        for (int stream = 0; stream < 3; ++stream) {
            // By way of a copy above the three, so that none is overwritten before it is copied.
            const int copy = fcntl(descriptors.at(static_cast<std::size_t>(stream)),
                                   F_DUPFD_CLOEXEC, firstOther);
            if (copy < 0)
                return errno;
            copies_.emplace_back(copy);
            if (const int code = posix_spawn_file_actions_adddup2(&actions_, copy, stream))
                return code;
        }
        return 0;
    }

    posix_spawn_file_actions_t* get() { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
    std::vector<FileHandle> copies_;
};

/// The rest of what the started process is to be like.
class Attributes {
public:
    Attributes() { posix_spawnattr_init(&attributes_); }

    ~Attributes() { posix_spawnattr_destroy(&attributes_); }

    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    Attributes(Attributes&&) = delete;
    Attributes& operator=(Attributes&&) = delete;

    /// No signal is blocked or ignored in the started process, whatever is here.
    void setDefaultSignals() {
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigfillset(&signals);
        for (const int unchangeable : {SIGKILL, SIGSTOP})
            sigdelset(&signals, unchangeable);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }

    posix_spawnattr_t* get() { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
};

} // namespace

std::optional<Error> Subprocess::launch() const {
    const auto path = fileSystemPath(executableURL);
    if (!path)
        return systemError(executableURL.absoluteString(), EINVAL);
    auto ownArguments = argumentsOf(*this, *path);
    auto ownEnvironment = environmentOf(*this);
    if (ownArguments.holdsNUL() || ownEnvironment.holdsNUL())
        return systemError(*path, EINVAL);
    FileActions fileActions;
    Attributes attributes;
    attributes.setDefaultSignals();
    pid_t child = 0;
    int code = fileActions.setStandardStreams({standardInput, standardOutput, standardError});
    if (code == 0)
        code = closeAllButStandardStreams(*fileActions.get(), *attributes.get());
    if (code == 0) {
        code =
            posix_spawn(&child, path->c_str(), fileActions.get(), attributes.get(),
                        ownArguments.pointers(), environment ? ownEnvironment.pointers() : environ);
    }
    if (code != 0)
        return systemError(*path, code);
    collectWhenEnded(child);
    return std::nullopt;
}

} // namespace Platform
