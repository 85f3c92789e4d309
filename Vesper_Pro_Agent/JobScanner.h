#pragma once

#include "Platform/URL.h"
#include "Vesper_Pro_Agent/ScanPass.h"

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace Vesper_Pro_Agent {

/// Takes snapshots of every job file in the folders: each immediate entry that is, or leads to, a
/// regular file that can be read, whatever its name but ".DS_Store". Folders that cannot be listed
/// and entries that cannot be read are left out.
///
/// A file's checksum and its label come from one reading, so that they are of the same bytes, in
/// small pieces, so that memory does not grow with what lies there. A file that is as the snapshot
/// before has it keeps the label found then.
///
/// Reading goes on on threads of the scanner's own, several files at a time, because nothing says
/// how long it takes: a file system that has stopped answering holds whoever asks it, for ever. A
/// file (or a list of entries) that comes no further while the patience lasts is waited for apart,
/// and that of many at a time:
/// the scan ends without it, with what the snapshot before says of it. When it comes to an end
/// after all, `lateEnd` is called, and the next scan has what it brought.
class JobScanner {
public:
    using Completion = ScanPass::Completion;

    /// `lateEnd` is called on one of the scanner's threads, and may begin no scan there.
    JobScanner(std::vector<Platform::URL> folders, std::function<void()> lateEnd,
               std::chrono::nanoseconds patience = std::chrono::seconds(1));

    /// As `stop` does.
    ~JobScanner();
    JobScanner(const JobScanner&) = delete;
    JobScanner& operator=(const JobScanner&) = delete;
    JobScanner(JobScanner&&) = delete;
    JobScanner& operator=(JobScanner&&) = delete;

    /// Begins a scan and returns. The completion is called once, on another thread, unless `stop`
    /// comes before it. One at a time: not before the completion of the scan before.
    void scan(std::shared_ptr<const JobSnapshot> previous, Completion completion);

    /// Ends the scan under way without its completion, silences `lateEnd`, and returns when nothing
    /// reads any more but what hangs, or at the latest after a fifth of a second. Callable again.
    void stop();

private:
    const std::vector<Platform::URL> folders_;
    const ScanPass::Surroundings surroundings_;
    std::weak_ptr<ScanPass> pass_; // the latest, which lives while something reads for it
};

} // namespace Vesper_Pro_Agent
