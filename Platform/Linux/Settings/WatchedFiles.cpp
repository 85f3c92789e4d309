#include "Platform/Linux/Settings/WatchedFiles.h"

#include "Platform/Native/ObservedSettings.h"
#include "Platform/NeverDestroyed.h"

#include <utility>

namespace Platform {

WatchedFiles& WatchedFiles::shared() {
    static const NeverDestroyed<WatchedFiles> files;
    return files.get();
}

void WatchedFiles::add(const std::filesystem::path& file) {
    if (file.empty())
        return;
    queue_.async([this, file] {
        files_.insert(file);
        watchSoon();
    });
}

void WatchedFiles::remove(const std::filesystem::path& file) {
    if (file.empty())
        return;
    queue_.async([this, file] {
        files_.erase(files_.find(file));
        watchSoon();
    });
}

void WatchedFiles::watchSoon() {
    if (!std::exchange(isWatchDue_, true))
        queue_.async([this] { watch(); });
}

void WatchedFiles::watch() {
    isWatchDue_ = false;
    if (files_.empty()) {
        watch_.reset();
    } else if (!watch_) {
        watch_ = FileWatch::make(queue_, [this] { watch(); });
    }
    if (watch_)
        watch_->watch({files_.begin(), files_.end()});
    ObservedSettings::shared().compare();
}

} // namespace Platform
