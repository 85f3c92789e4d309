#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/Linux/Files/Inotify/Inotify.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <set>
#include <string>

namespace Platform {

/// Calls back, once for each time that files are watched, when one of them may have become another:
/// written, replaced, made or deleted, also where its folder or one above it is missing so far, is
/// moved or deleted, and where links lead there, any of which may come to lead elsewhere. The owner
/// then watches anew and after that looks at the files. All of it happens on the queue, a
/// serial one that may block: a file system that has stopped answering holds it. There is no call
/// once the object has gone, and none when the system has no watches left.
class FileWatch : public std::enable_shared_from_this<FileWatch> {
public:
    /// Null when the system has no inotify instance left.
    static std::shared_ptr<FileWatch> make(const DispatchQueue& queue,
                                           std::function<void()> changed);

    /// For `make`.
    FileWatch(DispatchQueue queue, Inotify inotify, std::function<void()> changed);

    /// Watches these in place of those before. The instance is kept: once it was given back,
    /// another program of the user may have it.
    void watch(const std::set<std::filesystem::path>& files);

private:
    void watchFile(const std::filesystem::path& file);
    bool addWay(const std::filesystem::path& item);
    bool add(const std::filesystem::path& item, std::uint32_t events);
    void addNamed(const std::filesystem::path& folder, const std::string& name,
                  std::uint32_t events);
    void waitForEvents();
    void takeEvents();
    bool drain();

    const DispatchQueue queue_;
    const std::function<void()> changed_;
    Inotify inotify_;
    bool isWaiting_ = false;
    std::set<int> watches_;
    std::set<std::string, std::less<>> names_; // of what counts in the watched folders
};

} // namespace Platform
