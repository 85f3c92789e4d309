#include "Tools/JobLink/Core/SettingList.h"

#include "CorbelKit/Services/SharedSettings.h"
#include "Platform/MainThread.h"
#include "Tools/JobLink/Core/Exceptions.h"

#include <utility>

namespace JobLink {

using Platform::MainThread::run;

std::shared_ptr<SettingList> SettingList::make(std::string_view key, Observer observer) {
    auto list = std::make_shared<SettingList>(Private(), key, std::move(observer));
    list->queue_.async([list] {
        if (const auto suite = CorbelKit::SharedSettings::suite()) {
            list->observation_ = suite->observe(
                list->key_, [weak = list->weak_from_this()](const auto&, const auto&) {
                    if (const auto changed = weak.lock())
                        changed->queue_.async([changed] { changed->read(); });
                });
        }
        list->read();
    });
    return list;
}

SettingList::SettingList(Private /*unused*/, std::string_view key, Observer observer)
    : key_(key)
    , observer_(std::move(observer)) {}

void SettingList::set(std::string text, bool isListed,
                      std::function<void(std::optional<Platform::Error>)> completion) const {
    queue_.async(
        [key = key_, text = std::move(text), isListed, completion = std::move(completion)] {
            run([completion, failure = Exceptions::setListed(key, text, isListed)] {
                completion(failure);
            });
        });
}

// On the queue.
void SettingList::read() const {
    run([list = shared_from_this(), texts = CorbelKit::SharedSettings::readStringArray(key_)] {
        list->observer_(texts);
    });
}

} // namespace JobLink
