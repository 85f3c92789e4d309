#include "CorbelKit/Services/QueuedSave.h"

#include "CorbelKit/Services/SaveRequest.h"
#include "CorbelKit/Services/UserDataFile.h"
#include "Platform/NeverDestroyed.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace CorbelKit {
namespace {

using Span = std::span<const std::byte>;

constexpr std::string_view activityReason = "Queued saving user data";

} // namespace

QueuedSave& QueuedSave::shared() {
    static const Platform::NeverDestroyed<QueuedSave> queuedSave;
    return queuedSave.get();
}

void QueuedSave::write(Bytes data, Platform::URL url, Completion completion) {
    auto request = SaveRequest::make(
        std::move(url), [data = std::move(data)] { return Span(data); }, activityReason);
    queue_.async([request = std::move(request), completion = std::move(completion)] {
        const auto error = request->serve();
        if (completion)
            completion(error);
    });
}

void QueuedSave::whenSaved(std::function<void()> completion) {
    if (completion)
        queue_.async(std::move(completion));
}

void QueuedSave::enqueue(Encode encode, Platform::URL url) {
    auto encodeBytes = [encode = std::move(encode),
                        bytes = Bytes()]() mutable -> Platform::Expected<Span> {
        auto encoded = encode();
        if (!encoded)
            return encoded.error().error();
        bytes = std::move(*encoded);
        return Span(bytes);
    };
    queue_.async(
        [request = SaveRequest::make(std::move(url), std::move(encodeBytes), activityReason)] {
            if (const auto error = request->serve())
                UserDataFile::report(*error);
        });
}

} // namespace CorbelKit
