#pragma once

#include "Platform/DispatchQueue.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Platform {

/// Tells of changes anywhere in one folder tree, in batches. A handle: copies mean the same stream.
///
/// A stream is created, gets its queue, is started, and in the end stopped, invalidated and
/// released, each in a step of its own; a stopped one may be started again. A step out of this
/// order, or on a released stream, does nothing. The steps may be called on any thread, also from
/// the call-back. A stream whose last handle goes makes up for the last steps.
///
/// The call-back gets the paths of what changed, as bytes, on the queue: a batch at a time, never
/// beside itself. An item that was made, written, renamed or removed is given by its own path. A
/// path with a trailing slash is a folder to be looked at as a whole: one that was made or moved
/// into the tree together with what is in it, or the root where the system lost count of events
/// or the root itself went away. No link in the tree is followed.
///
/// A missing root is no failure: the stream is silent. A root that is a file tells of that file.
class FileSystemEventStream {
public:
    /// Owned by the stream; may outlive its handles while it runs.
    using Callback = std::function<void(const std::vector<std::string>& paths)>;

    /// Events from the start on, collected for `latency` from the first of a batch. The path is
    /// absolute and free of links. Absent when the system makes no stream of it.
    static std::optional<FileSystemEventStream>
    create(std::string_view path, std::chrono::nanoseconds latency, Callback callback);

    /// Where the call-back runs. Once, before the start.
    void setDispatchQueue(const DispatchQueue& queue) const;

    /// Returns when no later change will be missed. What changed while the stream was stopped is
    /// told afterwards, if only as the root that is to be looked at.
    void start() const;

    /// No call-back begins any more; one under way goes on.
    void stop() const;

    /// Gives up the queue.
    void invalidate() const;

    /// The last step, by which the stream is given up.
    void release() const;

private:
    class Steps;
    explicit FileSystemEventStream(std::shared_ptr<Steps> steps);

    std::shared_ptr<Steps> steps_;
};

} // namespace Platform
