#include "Vesper_Pro_Agent/JobComparison.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>
#include <unordered_set>

namespace Vesper_Pro_Agent {
namespace {

using Checksum = Platform::SHA256::Value;
using Job = JobSnapshot::value_type;

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
    EarlierContents(const JobSnapshot& previous, const std::vector<const Job*>& gone) {
        known_.reserve(previous.size());
        for (const auto& job : previous)
            known_.insert(job.second.checksum);
        for (const auto* job : gone)
            gone_.emplace(job->second.checksum, job);
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

    std::vector<const Job*> gone() const {
        std::vector<const Job*> jobs;
        jobs.reserve(gone_.size());
        for (const auto& [checksum, job] : gone_)
            jobs.push_back(job);
        std::ranges::sort(jobs, {}, [](const Job* job) -> const auto& { return job->first; });
        return jobs;
    }

private:
    std::unordered_set<Checksum, ChecksumHash> known_;
    std::unordered_multimap<Checksum, const Job*, ChecksumHash> gone_;
};

// How two snapshots differ, path by path.
struct PathDifferences {
    std::vector<const Job*> gone;
    std::vector<const Job*> modified;
    std::vector<const Job*> arrived;
};

// Both are in the order of their paths, so one walk along both does.
PathDifferences comparePaths(const JobSnapshot& previous, const JobSnapshot& current) {
    PathDifferences differences;
    auto after = current.begin();
    for (const auto& before : previous) {
        for (; after != current.end() && after->first < before.first; ++after)
            differences.arrived.push_back(&*after);
        if (after == current.end() || after->first != before.first) {
            differences.gone.push_back(&before);
            continue;
        }
        if (after->second.checksum != before.second.checksum)
            differences.modified.push_back(&*after);
        ++after;
    }
    for (; after != current.end(); ++after)
        differences.arrived.push_back(&*after);
    return differences;
}

} // namespace

std::vector<JobChange> compareJobs(const JobSnapshot& previous, const JobSnapshot& current) {
    std::vector<JobChange> changes;
    const auto add = [&](const Job* job, ChangeKind kind) {
        changes.push_back({job->first, kind, job->second.label});
    };
    auto [gone, modified, arrived] = comparePaths(previous, current);
    if (!arrived.empty()) {
        EarlierContents earlier(previous, gone);
        for (const auto* job : arrived) {
            if (!earlier.takeSource(job->second.checksum))
                add(job, ChangeKind::added);
        }
        gone = earlier.gone();
    }
    for (const auto* job : modified)
        add(job, ChangeKind::modified);
    for (const auto* job : gone)
        add(job, ChangeKind::deleted);
    return changes;
}

} // namespace Vesper_Pro_Agent
