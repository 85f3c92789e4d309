#include "Vesper_Pro_Agent/LateReads.h"

#include <algorithm>
#include <utility>

namespace Vesper_Pro_Agent {

LateReads::LateReads(std::function<void()> ended)
    : ended_(std::move(ended)) {}

LateReads::Known LateReads::take(const std::string& path) {
    const Platform::MutexLock lock(mutex_);
    const auto found = reads_.find(path);
    if (found == reads_.end())
        return {};
    auto& outcome = found->second;
    if (!outcome)
        return {.state = State::hangs};
    Known known{.state = State::ended, .outcome = std::move(*outcome)};
    reads_.erase(found);
    return known;
}

void LateReads::begin(const std::string& path) {
    const Platform::MutexLock lock(mutex_);
    reads_[path].reset();
}

void LateReads::end(const std::string& path, ReadOutcome outcome) {
    if (auto* const listed = std::get_if<ListedFolder>(&outcome))
        listed->folder.reset();
    const Platform::MutexLock lock(mutex_);
    reads_[path] = std::move(outcome);
    if (ended_)
        ended_();
}

void LateReads::silence() {
    const Platform::MutexLock lock(mutex_);
    ended_ = nullptr;
}

std::size_t LateReads::count() const {
    const Platform::MutexLock lock(mutex_);
    return static_cast<std::size_t>(
        std::ranges::count_if(reads_, [](const auto& read) { return !read.second; }));
}

} // namespace Vesper_Pro_Agent
