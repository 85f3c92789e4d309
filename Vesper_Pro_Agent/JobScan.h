#pragma once

#include "Platform/URL.h"
#include "Vesper_Pro_Agent/MonitoredJob.h"

#include <span>

namespace Vesper_Pro_Agent {

/// A snapshot of every job file in the folders: each immediate entry that is, or leads to, a
/// regular file that can be read, whatever its name but ".DS_Store". Folders that cannot be listed
/// and entries that cannot be read are left out.
///
/// Each file is read once, so that its checksum and its label are of the same bytes, in small
/// pieces, so that memory does not grow with what lies there. Several files are read at a time;
/// the call returns when all are. A file that is as `previous` has it keeps the label found then.
JobSnapshot scanJobs(std::span<const Platform::URL> folders, const JobSnapshot& previous);

} // namespace Vesper_Pro_Agent
