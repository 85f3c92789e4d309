#pragma once

#include "CorbelKit/Coding/PropertyListCoder.h"
#include "Platform/DispatchQueue.h"
#include "Platform/Expected.h"
#include "Platform/URL.h"

#include <functional>
#include <optional>
#include <utility>

namespace CorbelKit {

/// Saves in the background, one at a time and in the order in which they were requested. Each is
/// held against the system's sleep and sudden termination while it writes. Callable on any thread.
class QueuedSave {
public:
    /// What a file is to hold.
    using Bytes = PropertyListEncoder::Bytes;
    /// Gets the reason where the file was not written whole.
    using Completion = std::function<void(const std::optional<Platform::Error>& error)>;

    /// The one of the process, never destroyed. Another one outlives the saves that
    /// were requested of it.
    static QueuedSave& shared();

    QueuedSave() = default;
    ~QueuedSave() = default;
    QueuedSave(const QueuedSave&) = delete;
    QueuedSave& operator=(const QueuedSave&) = delete;
    QueuedSave(QueuedSave&&) = delete;
    QueuedSave& operator=(QueuedSave&&) = delete;

    /// Has the file hold the value, as it is now, as a binary property list, or else what it held
    /// before. A value that cannot be encoded, or written so that it can be read again, and a
    /// failed write are reported to the user and to the system log, and not tried again.
    template <class Value>
    void save(Value value, Platform::URL url) {
        enqueue([value = std::move(value)] { return PropertyListEncoder::binary().encode(value); },
                std::move(url));
    }

    /// The write alone, whose failure is the caller's. The completion, if there is one, runs on the
    /// object's queue.
    void write(Bytes data, Platform::URL url, Completion completion);

    /// Calls the completion, on the object's queue, when every save that was requested so far has
    /// ended, well or not: a program that is about to end waits for that, on whichever thread.
    void whenSaved(std::function<void()> completion);

private:
    using Encode = std::function<Platform::Expected<Bytes, CodingError>()>;

    void enqueue(Encode encode, Platform::URL url);

    const Platform::DispatchQueue queue_ =
        Platform::DispatchQueue::serial("com.tarnwell.QueuedSave");
};

} // namespace CorbelKit
