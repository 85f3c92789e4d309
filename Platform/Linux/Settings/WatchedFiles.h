#pragma once

#include "Platform/Linux/Settings/FileWatch.h"

#include <filesystem>
#include <memory>
#include <set>

namespace Platform {

/// The files of all observed settings, behind one watch; without any, no descriptor is open.
/// Callable on any thread.
class WatchedFiles {
public:
    static WatchedFiles& shared();

    /// @{
    /// As often removed as added. An empty path is no file.
    void add(const std::filesystem::path& file);
    void remove(const std::filesystem::path& file);
    /// @}

private:
    /// Once for all that is added and removed until then.
    void watchSoon();
    /// Watches the files anew, and then has the settings compared: what the watch before has not
    /// reported is seen by that.
    void watch();

    const DispatchQueue queue_ = DispatchQueue::serialBlocking("com.tarnwell.UserDefaults.watch");

    // On the queue only.
    std::multiset<std::filesystem::path> files_;
    std::shared_ptr<FileWatch> watch_;
    bool isWatchDue_ = false;
};

} // namespace Platform
