#include "Tools/JobLink/Core/KnownJobs.h"

#include "CorbelKit/Services/Const.h"
#include "Platform/Digest.h"
#include "Platform/UserDefaults.h"

#include <algorithm>
#include <span>
#include <utility>

namespace JobLink {
namespace {

using Platform::UserDefaults;

constexpr std::string_view key = "KnownJobs"; // a digest of each path, then one of its content

std::optional<UserDefaults> settings() {
    return UserDefaults::suite(CorbelKit::Const::App::Identifier::vesperPro);
}

} // namespace

KnownJobs::Digest KnownJobs::digestOf(std::string_view path) {
    Platform::SHA256 sum;
    sum.update(std::as_bytes(std::span(path)));
    return digestOf({.checksum = sum.finalize(), .label = {}});
}

KnownJobs::Digest KnownJobs::digestOf(const Vesper_Pro_Agent::MonitoredJob& job) {
    Digest digest{};
    std::copy_n(job.checksum.begin(), digest.size(), digest.begin());
    return digest;
}

std::optional<KnownJobs> KnownJobs::load() {
    const auto suite = settings();
    const auto stored = suite ? suite->data(key) : std::nullopt;
    if (!stored)
        return std::nullopt;
    KnownJobs known;
    constexpr auto size = std::tuple_size_v<Digest>;
    for (std::span<const std::byte> rest(*stored); rest.size() >= 2 * size;
         rest = rest.subspan(2 * size)) {
        Digest path{};
        std::copy_n(rest.begin(), size, path.begin());
        std::copy_n(rest.subspan(size).begin(), size, known.contents_[path].begin());
    }
    return known;
}

KnownJobs::KnownJobs(const Vesper_Pro_Agent::JobSnapshot& jobs) {
    for (const auto& job : jobs)
        contents_.emplace(digestOf(job.path), digestOf(job.copy()));
}

ListedJob::News KnownJobs::news(std::string_view path,
                                const Vesper_Pro_Agent::MonitoredJob& job) const {
    const auto found = contents_.find(digestOf(path));
    if (found == contents_.end())
        return ListedJob::News::added;
    return found->second == digestOf(job) ? ListedJob::News::none : ListedJob::News::modified;
}

std::optional<Platform::Error> KnownJobs::save() const {
    Platform::PropertyList::Data stored;
    for (const auto& [path, content] : contents_) {
        stored.insert(stored.end(), path.begin(), path.end());
        stored.insert(stored.end(), content.begin(), content.end());
    }
    auto suite = settings();
    if (!suite)
        return Platform::Error{"no settings can be kept"};
    return suite->set(key, std::move(stored));
}

} // namespace JobLink
