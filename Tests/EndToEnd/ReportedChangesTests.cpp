// The agent as a process: files in, notifications out.

#include "Tests/EndToEnd/AgentTest.h"

namespace {

using TestSupport::jobFile;
namespace fs = std::filesystem;

using ReportedChanges = AgentTest;

TEST_F(ReportedChanges, AllFiveFoldersAndAnyKindOfFile) {
    start();
    for (const auto* name : {"LaunchAgents/a.plist", "LaunchDaemons/.hidden", "StartupItems/text",
                             "PrivilegedHelperTools/org.example.tool"}) {
        trial.save(trial.library() / name, name);
        expectNext("New: " + (trial.library() / name).string());
    }
    save("a\nNew: b\x1B[2J\u00E9"); // which is shown safely
    expectNext("New: " + agents + "a\\nNew: b\\u{1B}[2J\u00E9");
    save(".DS_Store");
    fs::create_directory(job("folder"));
    save("folder/within.plist");
    trial.save(job("maker.plist"), jobFile("com.tarnwell.updater"));
    expectNothingMore();
}

TEST_F(ReportedChanges, ThoseOfEachFolderThatTheSystemStartsFromOnce) {
    const auto system = trial.library() / "for all";
    const auto own = trial.home() / ".config/autostart";
    fs::create_directories(system);
    fs::create_directories(own);
    trial.environment["CORBEL_STARTUP_FOLDERS"] =
        "~/.config/missing::relative:~/.config/./autostart:" + own.string() +
        "/:~/Library/LaunchAgents:" + system.string();
    start();
    trial.save(own / "org.example.desktop", "own");
    expectNext("New: ~/.config/autostart/org.example.desktop");
    save("a");
    expectNext("New: " + agents + "a");
    trial.save(system / "unit", "all");
    expectNext("New: " + (system / "unit").string());
    expectNothingMore();
}

TEST_F(ReportedChanges, NamesThatAreNoText) {
    start();
    save("a\xE9");
    expectNext("New: " + agents + "a\uFFFD");
}

TEST_F(ReportedChanges, WhatStoodThereAtLaunchIsKnownAndDeletionsTakeEachOthersPlace) {
    for (const auto* name : {"one", "two", "unreadable"})
        save(name);
    start();
    expectNothingMore();
    fs::remove(job("one"));
    fs::remove(job("two"));
    expectNext("Deleted: " + agents + "two");
    expectNothingMore();
    fs::create_symlink("/dev/zero", job("endless"));
    fs::rename(job("endless"), job("unreadable"));
    expectNext("Deleted: " + agents + "unreadable");
}

} // namespace
