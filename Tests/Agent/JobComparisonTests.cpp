#include "Vesper_Pro_Agent/JobComparison.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using namespace Vesper_Pro_Agent;

JobSnapshot snapshot(const std::vector<std::pair<std::string, char>>& files) {
    JobSnapshot jobs;
    for (const auto& [path, content] : files)
        jobs[path] = {.checksum = {std::byte(content)}, .label = "label of " + path};
    return jobs;
}

std::string describe(const std::vector<JobChange>& changes) {
    std::string text;
    for (const auto& change : changes)
        text += std::string(1, "+~-"[static_cast<int>(change.kind)]) + change.path + " ";
    return text;
}

TEST(JobComparison, TellsChangesFromMoves) {
    struct Case {
        const char* claim;
        std::vector<std::pair<std::string, char>> before;
        std::vector<std::pair<std::string, char>> after;
        const char* changes;
    };

    const Case cases[] = {
        {"nothing changed", {{"a", '1'}}, {{"a", '1'}}, ""},
        {"one of each", {{"a", '1'}, {"b", '2'}}, {{"b", '3'}, {"c", '4'}}, "+c ~b -a "},
        {"a rename is silent", {{"a", '1'}}, {{"b", '1'}}, ""},
        {"a copy is silent", {{"a", '1'}}, {{"a", '1'}, {"b", '1'}}, ""},
        {"moved, and the old path has new content", {{"a", '1'}}, {{"a", '2'}, {"b", '1'}}, "~a "},
        {"two jobs that swap contents",
         {{"a", '1'}, {"b", '2'}},
         {{"a", '2'}, {"b", '1'}},
         "~a ~b "},
        {"both of two equal jobs move", {{"a", '1'}, {"b", '1'}}, {{"c", '1'}, {"d", '1'}}, ""},
        {"moved and copied at once", {{"a", '1'}}, {{"b", '1'}, {"c", '1'}}, ""},
        {"a move is told from a copy of what stays",
         {{"a", '1'}, {"b", '1'}},
         {{"a", '1'}, {"c", '1'}},
         ""},
        {"new content twice", {}, {{"a", '1'}, {"b", '1'}}, "+a +b "},
        {"all gone", {{"a", '1'}, {"b", '1'}}, {}, "-a -b "},
    };
    for (const auto& [claim, before, after, changes] : cases)
        EXPECT_EQ(describe(compareJobs(snapshot(before), snapshot(after))), changes) << claim;
}

TEST(JobComparison, KeepsTheLabelThatADeletedJobHad) {
    const auto changes = compareJobs(snapshot({{"a", '1'}}), {});
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].label, "label of a");
}

} // namespace
