#pragma once

#include "Platform/FileSystemEventStream.h"
#include "Tests/Platform/ReportedPaths.h"
#include "Tests/Support/Testing.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace TestSupport {

/// How many watches the process holds.
inline int watches() {
    int count = 0;
    for (const auto& entry : fs::directory_iterator("/proc/self/fdinfo")) {
        std::ifstream info(entry.path());
        for (std::string line; std::getline(info, line);)
            count += line.starts_with("inotify wd:") ? 1 : 0;
    }
    return count;
}

/// A tree, its streams, and what they report.
class EventStreamFixture : public ::testing::Test {
protected:
    bool reports(const fs::path& file) {
        writeFile(file, "1");
        return reported.soonContain(file.string());
    }

    // The tree may be found again only after some of the changes.
    static bool reportsInTheEnd(const ReportedPaths& paths, const fs::path& file) {
        return waitUntil([&] {
            writeFile(file, "1");
            return paths.contains(file.string());
        });
    }

    std::string rootAsAWhole() const { return root.string() + '/'; }

    TemporaryFolder temporary;
    const fs::path root = temporary.path();
    ReportedPaths reported;
};

} // namespace TestSupport
