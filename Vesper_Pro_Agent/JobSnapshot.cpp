#include "Vesper_Pro_Agent/JobSnapshot.h"

#include <algorithm>

namespace Vesper_Pro_Agent {

MonitoredJob JobSnapshot::Job::copy() const {
    return {.checksum = checksum,
            .label = label ? std::optional(std::string(*label)) : std::nullopt};
}

JobSnapshot::JobSnapshot(const Jobs& jobs)
    : JobSnapshot([&] {
        std::vector<Found> found;
        found.reserve(jobs.size());
        for (const auto& [path, job] : jobs)
            found.push_back({.path = path, .job = &job});
        return found;
    }()) {}

JobSnapshot::JobSnapshot(std::vector<Found> jobs) {
    if (!std::ranges::is_sorted(jobs, {}, &Found::path)) // as a pass over one folder finds them
        std::ranges::sort(jobs, {}, &Found::path);
    std::size_t length = 0;
    for (const auto& [path, job] : jobs)
        length += path.size() + (job->label ? job->label->size() : 0);
    texts_.reserve(length);
    entries_.reserve(jobs.size());
    for (const auto& [path, job] : jobs) {
        const auto labelLength =
            job->label ? static_cast<std::uint32_t>(job->label->size()) : noLabel;
        entries_.push_back({.checksum = job->checksum,
                            .text = texts_.size(),
                            .pathLength = static_cast<std::uint32_t>(path.size()),
                            .labelLength = labelLength});
        texts_ += path;
        if (job->label)
            texts_ += *job->label;
    }
}

JobSnapshot::Job JobSnapshot::operator[](std::size_t index) const {
    const auto& entry = entries_[index];
    std::optional<std::string_view> label;
    if (entry.labelLength != noLabel)
        label = std::string_view(texts_).substr(entry.text + entry.pathLength, entry.labelLength);
    return {.path = pathOf(entry), .checksum = entry.checksum, .label = label};
}

std::size_t JobSnapshot::lowerBound(std::string_view path) const {
    const auto found = std::ranges::lower_bound(
        entries_, path, {}, [this](const Entry& entry) { return pathOf(entry); });
    return static_cast<std::size_t>(found - entries_.begin());
}

std::optional<MonitoredJob> JobSnapshot::find(std::string_view path) const {
    const auto index = lowerBound(path);
    if (index == size() || (*this)[index].path != path)
        return std::nullopt;
    return (*this)[index].copy();
}

} // namespace Vesper_Pro_Agent
