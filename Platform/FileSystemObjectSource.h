#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/URL.h"

#include <functional>
#include <memory>

namespace Platform {

/// Notifies that the entries of one folder were written: one was added, removed or given another
/// name. It does not say which; writing into a file of the folder is no such event, nor is the
/// end of the folder itself. Where the system lost count of events, the handler runs as well.
///
/// The handlers run on the queue given at construction; a source's handlers never run beside each
/// other. Events that come close together may reach the handler as one. All operations may be
/// called on any thread, also from a handler.
class FileSystemObjectSource {
public:
    /// Owned by the source.
    using Handler = std::function<void()>;

    /// Opens the item at the URL for events alone: the descriptor reads nothing and does not keep
    /// the item's volume from being unmounted. The caller owns it. -1 when it cannot be opened.
    static int openForEvents(const URL& url);

    /// A source that is not started. The descriptor comes from `openForEvents` and stays open
    /// until the cancel handler has begun.
    FileSystemObjectSource(int fileDescriptor, const DispatchQueue& queue);

    /// Released without `cancel`: no handler starts any more, and the cancel handler never runs.
    /// Released after `cancel`: the cancel handler still runs.
    ~FileSystemObjectSource();
    FileSystemObjectSource(const FileSystemObjectSource&) = delete;
    FileSystemObjectSource& operator=(const FileSystemObjectSource&) = delete;
    FileSystemObjectSource(FileSystemObjectSource&&) = delete;
    FileSystemObjectSource& operator=(FileSystemObjectSource&&) = delete;

    /// @{
    /// Before `resume`.
    void setEventHandler(Handler handler);
    void setCancelHandler(Handler handler);
    /// @}

    /// Starts delivery; events since the source was made are not lost.
    void resume();

    /// Ends delivery and then runs the cancel handler once on the queue, when no event handler
    /// runs any more and the descriptor is the caller's alone again. A second call does nothing.
    void cancel();

private:
    class Impl;
    std::shared_ptr<Impl> impl_;
};

} // namespace Platform
