#pragma once

#include "Vesper_Pro_Agent/MonitoredJob.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Vesper_Pro_Agent {

/// Job files by their path, which is bytes in the file system's form; in the order of the paths, so
/// that changes found together are reported in a steady order. A plain value that does not change.
///
/// The agent keeps one for as long as it runs, of whatever lies in the folders: it takes the texts'
/// lengths and 48 bytes a job, in two pieces of memory.
class JobSnapshot {
public:
    /// With no path twice, in any order.
    using Jobs = std::vector<std::pair<std::string, MonitoredJob>>;

    /// One of the jobs; good as long as the snapshot.
    struct Job {
        std::string_view path;
        const Platform::SHA256::Value& checksum;
        std::optional<std::string_view> label;

        MonitoredJob copy() const;
    };

    class Iterator;

    JobSnapshot() = default;
    explicit JobSnapshot(const Jobs& jobs);

    /// A job that lies somewhere until the snapshot is made.
    struct Found {
        std::string_view path;
        const MonitoredJob* job;
    };

    /// Likewise.
    explicit JobSnapshot(std::vector<Found> jobs);

    std::size_t size() const { return entries_.size(); }

    Job operator[](std::size_t index) const;

    /// The first whose path is not before this one; `size` where all are.
    std::size_t lowerBound(std::string_view path) const;

    std::optional<MonitoredJob> find(std::string_view path) const;

    Iterator begin() const;
    Iterator end() const;

private:
    struct Entry {
        Platform::SHA256::Value checksum;
        std::uint64_t text; ///< where its path begins; the label follows
        std::uint32_t pathLength;
        std::uint32_t labelLength; ///< `noLabel` where it has none
    };

    static constexpr std::uint32_t noLabel = UINT32_MAX;

    std::string_view pathOf(const Entry& entry) const {
        return std::string_view(texts_).substr(entry.text, entry.pathLength);
    }

    std::vector<Entry> entries_;
    std::string texts_;
};

/// For a loop over the jobs.
class JobSnapshot::Iterator {
public:
    Iterator(const JobSnapshot& jobs, std::size_t index)
        : jobs_(&jobs)
        , index_(index) {}

    Job operator*() const { return (*jobs_)[index_]; }

    Iterator& operator++() {
        ++index_;
        return *this;
    }

    bool operator==(const Iterator&) const = default;

private:
    const JobSnapshot* jobs_;
    std::size_t index_;
};

inline JobSnapshot::Iterator JobSnapshot::begin() const {
    return {*this, 0};
}

inline JobSnapshot::Iterator JobSnapshot::end() const {
    return {*this, size()};
}

} // namespace Vesper_Pro_Agent
