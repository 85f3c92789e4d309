#pragma once

#include "Vesper_Pro_Agent/JobSnapshot.h"

#include <optional>
#include <string>
#include <vector>

namespace Vesper_Pro_Agent {

enum class ChangeKind { added = 0, modified = 1, deleted = 2 };

struct JobChange {
    std::string path;
    ChangeKind kind;
    std::optional<std::string> label; ///< the job's, as it last was
};

/// How `current` differs from `previous`: what was added, what was modified, what was deleted, each
/// in the order of the paths. A job whose content stood under another path before counts as moved
/// or copied and is no change, and neither is that other path's end: where several paths had the
/// content, one that is gone is taken before one that still stands, and each for one move.
std::vector<JobChange> compareJobs(const JobSnapshot& previous, const JobSnapshot& current);

} // namespace Vesper_Pro_Agent
