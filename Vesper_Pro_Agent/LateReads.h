#pragma once

#include "Platform/FolderHandle.h"
#include "Platform/Mutex.h"
#include "Vesper_Pro_Agent/MonitoredJob.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Vesper_Pro_Agent {

/// What reading a file gives; absent where that failed.
using ReadFile = std::optional<MonitoredJob>;

/// What listing a folder gives; nothing where that failed.
struct ListedFolder {
    std::vector<std::string> paths;               ///< of the entries, in order
    std::optional<Platform::FolderHandle> folder; ///< to open them from
};

using ReadOutcome = std::variant<ReadFile, ListedFolder>;

/// The reads that a scan has given up waiting for, by path, until a later scan has taken what they
/// brought. Callable on any thread.
class LateReads {
public:
    /// `ended` is called when one has ended, on its thread; it must not call anything here.
    explicit LateReads(std::function<void()> ended);

    enum class State {
        none,  ///< read it
        hangs, ///< somebody still does
        ended, ///< `outcome` is what came of it
    };

    struct Known {
        State state = State::none;
        ReadOutcome outcome{};
    };

    /// Gives an outcome away once.
    Known take(const std::string& path);

    void begin(const std::string& path);

    /// Of a folder its paths alone are kept: another may lie there when they are taken, and an open
    /// one would hold its volume.
    void end(const std::string& path, ReadOutcome outcome);

    /// Of those that still hang.
    std::size_t count() const;

    /// `ended` is not called any more.
    void silence();

private:
    mutable Platform::Mutex mutex_;
    std::function<void()> ended_ CORBEL_GUARDED_BY(mutex_);
    std::map<std::string, std::optional<ReadOutcome>> reads_ CORBEL_GUARDED_BY(mutex_);
};

} // namespace Vesper_Pro_Agent
