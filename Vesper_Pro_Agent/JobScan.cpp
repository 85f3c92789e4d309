#include "Vesper_Pro_Agent/JobScan.h"

#include "CorbelKit/Services/Const.h"
#include "Platform/DispatchQueue.h"
#include "Platform/FileManager.h"
#include "Vesper_Pro_Agent/JobFileReader.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <utility>
#include <vector>

namespace Vesper_Pro_Agent {
namespace {

struct Entry {
    Platform::URL url;
    std::string path;
    const MonitoredJob* known = nullptr;
    std::optional<MonitoredJob> job;
};

std::vector<Entry> listEntries(std::span<const Platform::URL> folders) {
    std::vector<Entry> entries;
    for (const auto& folder : folders) {
        for (auto& url : Platform::FileManager::contentsOfDirectory(folder).value_or(
                 std::vector<Platform::URL>())) {
            if (url.lastPathComponent() != CorbelKit::Const::FileName::dsStore) {
                auto path = url.path();
                entries.push_back({.url = std::move(url), .path = std::move(path), .job = {}});
            }
        }
    }
    std::ranges::sort(entries, {}, &Entry::path);
    return entries;
}

void findKnown(std::vector<Entry>& entries, const JobSnapshot& previous) {
    auto known = previous.begin();
    for (auto& entry : entries) {
        while (known != previous.end() && known->first < entry.path)
            ++known;
        if (known != previous.end() && known->first == entry.path)
            entry.known = &known->second;
    }
}

// Each lane has a buffer of its own and takes the next entry when it is done with one, so a large
// file holds up one lane alone.
void readEntries(std::vector<Entry>& entries) {
    const auto lanes =
        std::min<std::size_t>(entries.size(), std::max(1U, std::thread::hardware_concurrency()));
    std::atomic<std::size_t> next = 0;
    Platform::DispatchQueue::apply(lanes, [&](std::size_t) {
        JobFileReader reader;
        for (auto index = next++; index < entries.size(); index = next++)
            entries[index].job = reader.read(entries[index].url, entries[index].known);
    });
}

} // namespace

JobSnapshot scanJobs(std::span<const Platform::URL> folders, const JobSnapshot& previous) {
    auto entries = listEntries(folders);
    findKnown(entries, previous);
    readEntries(entries);
    JobSnapshot jobs;
    for (auto& entry : entries) {
        if (entry.job)
            jobs.emplace_hint(jobs.end(), std::move(entry.path), *std::move(entry.job));
    }
    return jobs;
}

} // namespace Vesper_Pro_Agent
