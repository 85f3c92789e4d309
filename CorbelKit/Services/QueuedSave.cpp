#include "CorbelKit/Services/QueuedSave.h"

#include "CorbelKit/Services/UserDataFile.h"
#include "Platform/NeverDestroyed.h"

#include <string_view>

namespace CorbelKit {
namespace {

constexpr std::string_view activityReason = "Queued saving user data";

} // namespace

QueuedSave& QueuedSave::shared() {
    static const Platform::NeverDestroyed<QueuedSave> queuedSave;
    return queuedSave.get();
}

void QueuedSave::write(Bytes data, Platform::URL url, Completion completion) {
    queue_.async(
        [data = std::move(data), url = std::move(url), completion = std::move(completion)] {
            completion(UserDataFile::write(data, url, activityReason));
        });
}

void QueuedSave::enqueue(Encode encode, Platform::URL url) {
    queue_.async([encode = std::move(encode), url = std::move(url)] {
        const auto data = encode();
        const auto error = data ? UserDataFile::write(*data, url, activityReason)
                                : std::optional(data.error().error());
        if (error)
            UserDataFile::report(*error);
    });
}

} // namespace CorbelKit
