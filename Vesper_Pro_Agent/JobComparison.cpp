#include "Vesper_Pro_Agent/JobComparison.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Vesper_Pro_Agent {
namespace {

using Checksum = Platform::SHA256::Value;
using Indexes = std::vector<std::size_t>; // of jobs, in the order of their paths

// A digest's bits are spread evenly as they are.
struct ChecksumHash {
    std::size_t operator()(const Checksum& checksum) const {
        std::size_t hash = 0;
        std::memcpy(&hash, checksum.data(), sizeof hash);
        return hash;
    }
};

// The contents that earlier jobs had: where the jobs at new paths may come from.
class EarlierContents {
public:
    EarlierContents(const JobSnapshot& previous, const Indexes& gone) {
        known_.reserve(previous.size());
        for (const auto& job : previous)
            known_.insert(job.checksum);
        gone_.reserve(gone.size());
        for (const auto index : gone)
            gone_.emplace(previous[index].checksum, index);
    }

    /// Whether a new path has content that stood elsewhere before; a job that is gone from there
    /// then counts as moved, and no longer as gone.
    bool takeSource(const Checksum& checksum) {
        if (!known_.contains(checksum))
            return false;
        if (const auto moved = gone_.find(checksum); moved != gone_.end())
            gone_.erase(moved);
        return true;
    }

    Indexes gone() const {
        Indexes indexes;
        indexes.reserve(gone_.size());
        for (const auto& [checksum, index] : gone_)
            indexes.push_back(index);
        std::ranges::sort(indexes);
        return indexes;
    }

private:
    std::unordered_set<Checksum, ChecksumHash> known_;
    std::unordered_multimap<Checksum, std::size_t, ChecksumHash> gone_;
};

// How two snapshots differ, path by path.
struct PathDifferences {
    Indexes gone; // in the previous one
    Indexes modified;
    Indexes arrived;
};

// Both are in the order of their paths, so one walk along both does.
PathDifferences comparePaths(const JobSnapshot& previous, const JobSnapshot& current) {
    PathDifferences differences;
    std::size_t after = 0;
    for (std::size_t before = 0; before < previous.size(); ++before) {
        const auto job = previous[before];
        for (; after < current.size() && current[after].path < job.path; ++after)
            differences.arrived.push_back(after);
        if (after == current.size() || current[after].path != job.path) {
            differences.gone.push_back(before);
            continue;
        }
        if (current[after].checksum != job.checksum)
            differences.modified.push_back(after);
        ++after;
    }
    for (; after < current.size(); ++after)
        differences.arrived.push_back(after);
    return differences;
}

} // namespace

std::vector<JobChange> compareJobs(const JobSnapshot& previous, const JobSnapshot& current) {
    std::vector<JobChange> changes;
    const auto add = [&](const JobSnapshot::Job& job, ChangeKind kind) {
        changes.push_back({std::string(job.path), kind, job.copy().label});
    };
    auto [gone, modified, arrived] = comparePaths(previous, current);
    if (!arrived.empty()) {
        EarlierContents earlier(previous, gone);
        for (const auto index : arrived) {
            if (!earlier.takeSource(current[index].checksum))
                add(current[index], ChangeKind::added);
        }
        gone = earlier.gone();
    }
    for (const auto index : modified)
        add(current[index], ChangeKind::modified);
    for (const auto index : gone)
        add(previous[index], ChangeKind::deleted);
    return changes;
}

} // namespace Vesper_Pro_Agent
