#include "Platform/Linux/Settings/WatchedFiles.h"

#include "Platform/Linux/Loops/WorkerPool.h"
#include "Platform/Native/ObservedSettings.h"
#include "Platform/NeverDestroyed.h"

#include <asio/post.hpp>

namespace Platform {

WatchedFiles& WatchedFiles::shared() {
    static const NeverDestroyed<WatchedFiles> files;
    return files.get();
}

WatchedFiles::WatchedFiles()
    : strand_(asio::make_strand(workerExecutor())) {}

void WatchedFiles::add(const std::filesystem::path& file) {
    if (file.empty())
        return;
    asio::post(strand_, [this, file] {
        files_.insert(file);
        watch();
    });
}

void WatchedFiles::remove(const std::filesystem::path& file) {
    if (file.empty())
        return;
    asio::post(strand_, [this, file] {
        files_.erase(files_.find(file));
        watch();
    });
}

void WatchedFiles::watch() {
    watch_.reset();
    if (!files_.empty())
        watch_ = FileWatch::start(strand_, {files_.begin(), files_.end()}, [this] { watch(); });
    ObservedSettings::shared().compare();
}

} // namespace Platform
