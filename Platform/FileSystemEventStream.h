#pragma once

#include "Platform/DispatchQueue.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Platform {

/// Reports changes anywhere in one folder tree, in batches, from its making to its end. All
/// operations may be called on any thread, also from the call-back.
///
/// The call-back gets the paths of what changed, as bytes, on the queue: a batch at a time, never
/// beside itself. An item that was made, written, renamed or removed is given by its own path. A
/// path that ends with a slash is that of a folder itself; a folder may also be given without one.
/// No link in the tree is followed.
///
/// A path is one that the item had since the batch began, and may not be the one that it has: a
/// folder above it may have moved. What has moved, with all that is in it, is reported by its new
/// path, in this batch or in one to come. So one path may stand for all that is below it, as also
/// where a folder came into the tree together with what is in it, and where the system lost count
/// of events; nothing marks such a path.
///
/// The stream is for the path, whatever lies there: it is silent while there is nothing. What comes
/// to lie there, again or in the place of another, is reported once and watched from then on,
/// whenever that is. Of a file, the stream reports that file's changes. A folder that may not be
/// read is watched as soon as it may be.
class FileSystemEventStream {
    class Impl;

public:
    /// Owned by the stream; one under way may outlive it.
    using Callback = std::function<void(const std::vector<std::string>& paths)>;

    /// A stream that runs: no later change will be missed. Events are collected for `latency` from
    /// the first of a batch. The path is absolute and free of links. Null when the system makes no
    /// stream of it.
    static std::unique_ptr<FileSystemEventStream> make(std::string_view path,
                                                       std::chrono::nanoseconds latency,
                                                       const DispatchQueue& queue,
                                                       Callback callback);

    /// For `make`.
    explicit FileSystemEventStream(std::unique_ptr<Impl> impl);

    /// Ends it.
    ~FileSystemEventStream();
    FileSystemEventStream(const FileSystemEventStream&) = delete;
    FileSystemEventStream& operator=(const FileSystemEventStream&) = delete;
    FileSystemEventStream(FileSystemEventStream&&) = delete;
    FileSystemEventStream& operator=(FileSystemEventStream&&) = delete;

    /// No call-back begins any more; one under way goes on. A second call does nothing.
    void end() const;

private:
    const std::unique_ptr<Impl> impl_;
};

} // namespace Platform
