#include "Vesper_Pro_Agent/JobComparison.h"

#include <gtest/gtest.h>

namespace {

using namespace Vesper_Pro_Agent;

/// Of files whose name and content are one character each.
JobSnapshot snapshot(std::string_view files) {
    JobSnapshot::Jobs jobs;
    for (; files.size() >= 2; files.remove_prefix(2)) {
        const MonitoredJob job{.checksum = {std::byte(files[1])}, .label = {}};
        jobs.emplace_back(std::string(1, files[0]), job);
    }
    return JobSnapshot(jobs);
}

std::string describe(const std::vector<JobChange>& changes) {
    std::string text;
    for (const auto& change : changes)
        text += std::string(1, "+~-"[static_cast<int>(change.kind)]) + change.path + " ";
    return text;
}

TEST(JobComparison, TakesNoMoveForAChange) {
    const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
        {"nothing changed", "a1", "a1", ""},
        {"one of each", "a1b2", "b3c4", "+c ~b -a "},
        {"a rename is silent", "a1", "b1", ""},
        {"a copy is silent", "a1", "a1b1", ""},
        {"moved, and the old path has new content", "a1", "a2b1", "~a "},
        {"two jobs that swap contents", "a1b2", "a2b1", "~a ~b "},
        {"both of two equal jobs move", "a1b1", "c1d1", ""},
        {"moved and copied at once", "a1", "b1c1", ""},
        {"a move differs from a copy of what stays", "a1b1", "a1c1", ""},
        {"new content twice", "", "a1b1", "+a +b "},
        {"all gone", "a1b1", "", "-a -b "},
    };
    for (const auto& [claim, before, after, changes] : cases)
        EXPECT_EQ(describe(compareJobs(snapshot(before), snapshot(after))), changes) << claim;
}

} // namespace
