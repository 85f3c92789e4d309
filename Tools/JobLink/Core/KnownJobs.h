#pragma once

#include "Platform/Expected.h"
#include "Tools/JobLink/Core/ListedJob.h"
#include "Vesper_Pro_Agent/JobSnapshot.h"

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string_view>

namespace JobLink {

/// The jobs that the user has seen in the list, remembered from one look to the next in the main
/// application's own settings. For one thread at a time, which waits for the disk.
class KnownJobs {
public:
    /// As the last look left them; absent before the first one.
    static std::optional<KnownJobs> load();

    /// Those of a look.
    explicit KnownJobs(const Vesper_Pro_Agent::JobSnapshot& jobs);

    /// What the user has not seen of the job.
    ListedJob::News news(std::string_view path, const Vesper_Pro_Agent::MonitoredJob& job) const;

    /// For the next look. Gives the reason where they cannot be remembered.
    std::optional<Platform::Error> save() const;

private:
    // Of a SHA-256 digest, enough that nobody makes another file with the same.
    using Digest = std::array<std::byte, 16>;

    static Digest digestOf(std::string_view path);
    static Digest digestOf(const Vesper_Pro_Agent::MonitoredJob& job);

    KnownJobs() = default;

    std::map<Digest, Digest> contents_; // by path
};

} // namespace JobLink
