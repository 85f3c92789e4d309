#include "CorbelKit/Services/SaveRequest.h"

#include "CorbelKit/Services/UserDataFile.h"
#include "Platform/FileContents.h"
#include "Platform/Mutex.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/ProcessActivity.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <exception>
#include <map>
#include <string>
#include <utility>

namespace CorbelKit {

using Platform::MutexLock;

/// What the requests of one file share, and what is to be known until the next one.
class SaveRequest::File {
public:
    static std::shared_ptr<File> of(const Platform::URL& url);

    /// Its place in the order of requests.
    std::uint64_t add(const std::shared_ptr<SaveRequest>& request) {
        const MutexLock lock(mutex_);
        while (!requests_.empty() && requests_.front().expired())
            requests_.pop_front();
        requests_.push_back(request);
        return ++count_;
    }

    std::deque<std::weak_ptr<SaveRequest>> requests() {
        const MutexLock lock(mutex_);
        return requests_;
    }

    bool setsAside() {
        const MutexLock lock(mutex_);
        return setsAside_;
    }

    void setSetsAside(bool setsAside) {
        const MutexLock lock(mutex_);
        setsAside_ = setsAside;
    }

    Platform::Mutex turn; ///< of the one that is served
    std::uint64_t latestWritten CORBEL_GUARDED_BY(turn) = 0;

private:
    Platform::Mutex mutex_;
    // Those of the queue end in their order; one past it, amid them, at once.
    std::deque<std::weak_ptr<SaveRequest>> requests_ CORBEL_GUARDED_BY(mutex_);
    std::uint64_t count_ CORBEL_GUARDED_BY(mutex_) = 0;
    bool setsAside_ CORBEL_GUARDED_BY(mutex_) = false;
};

std::shared_ptr<SaveRequest::File> SaveRequest::File::of(const Platform::URL& url) {
    struct Files {
        Platform::Mutex mutex;
        std::map<std::string, std::shared_ptr<File>> all CORBEL_GUARDED_BY(mutex);
        std::size_t inUse CORBEL_GUARDED_BY(mutex) = 0; // when the others were last removed
    };

    static const Platform::NeverDestroyed<Files> files;
    auto& [mutex, all, inUse] = files.get();
    const MutexLock lock(mutex);
    // Nobody waits to save to these, and there is nothing else to be known of them.
    constexpr std::size_t few = 8;
    if (all.size() >= std::max(few, 2 * inUse)) { // else each would look at all others
        std::erase_if(all, [](const auto& entry) {
            return entry.second.use_count() == 1 && !entry.second->setsAside();
        });
        inUse = all.size();
    }
    auto& file = all[url.absoluteString()];
    if (!file)
        file = std::make_shared<File>();
    return file;
}

std::shared_ptr<SaveRequest> SaveRequest::make(Platform::URL url, Encode encode,
                                               std::string_view reason) {
    auto request =
        std::make_shared<SaveRequest>(Private(), std::move(url), std::move(encode), reason);
    request->number_ = request->file_->add(request);
    return request;
}

SaveRequest::SaveRequest(Private /*unused*/, Platform::URL url, Encode encode,
                         std::string_view reason)
    : url_(std::move(url))
    , reason_(reason)
    , file_(File::of(url_))
    , encode_(std::move(encode)) {}

std::optional<Platform::Error> SaveRequest::serve() {
    const MutexLock lock(file_->turn);
    if (!encode_)
        return failure_;
    if (number_ > file_->latestWritten) {
        failure_ = save();
        if (!failure_)
            file_->latestWritten = number_;
    }
    encode_ = nullptr;
    return failure_;
}

void SaveRequest::serveAll(const Platform::URL& url) {
    for (const auto& weak : File::of(url)->requests()) {
        if (const auto request = weak.lock())
            request->serve(); // whoever requested it is given the failure
    }
}

void SaveRequest::setAsideNext(const Platform::URL& url, bool setsAside) {
    File::of(url)->setSetsAside(setsAside);
}

std::optional<Platform::Error> SaveRequest::save() const {
    try {
        const auto data = encode_();
        if (!data)
            return Platform::Error{url_.path() + ": " + data.error().description};
        auto activity = Platform::ProcessActivity::begin(
            Platform::ProcessActivity::Options::userInitiated, reason_);
        if (auto error = Platform::FileContents::replace(
                url_, *data, [this](const auto& file) { return makeRoom(file); }))
            return error;
        activity.end();
        return std::nullopt;
    } catch (const std::exception& failure) { // of the value's own code, or for want of memory
        return Platform::Error{url_.path() + ": " + failure.what()};
    }
}

std::optional<Platform::Error> SaveRequest::makeRoom(const Platform::URL& file) const {
    if (!file_->setsAside())
        return std::nullopt;
    const auto message = Platform::FileContents::setAside(file);
    if (!message)
        return message.error();
    file_->setSetsAside(false);
    if (!message->empty())
        UserDataFile::report({*message});
    return std::nullopt;
}

} // namespace CorbelKit
