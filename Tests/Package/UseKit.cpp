// A program of somebody else that uses the kit from monitors to user data, and says what went
// wrong. Nothing is prepared for the kit here: signals have their default effect, and memory is the
// program's own affair.

#include "../CorbelKit/Note.h"

#include <CorbelKit/Monitors/FileSystemMonitor.h>
#include <CorbelKit/Monitors/SingleFolderMonitor.h>
#include <CorbelKit/Services/RunTool.h>
#include <CorbelKit/Services/UserDataList.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <semaphore>

namespace {

namespace fs = std::filesystem;

void require(bool holds, const char* what) {
    if (!holds) {
        std::cerr << "failed: " << what << std::endl;
        std::exit(EXIT_FAILURE);
    }
}

struct Delegate final : CorbelKit::MonitorDelegate {
    void monitorDidChange(const Platform::URL& /*url*/) override {
        if (!isNotified.exchange(true))
            notified.release();
    }

    std::atomic<bool> isNotified = false;
    std::binary_semaphore notified{0};
};

template <class Monitor>
void useMonitor(const fs::path& folder) {
    const auto delegate = std::make_shared<Delegate>();
    const auto monitor = Monitor::make(Platform::URL::file(folder.string()));
    monitor->setDelegate(delegate);
    std::ofstream(folder / "new") << "new";
    require(delegate->notified.try_acquire_for(std::chrono::seconds(20)), "a monitor notifies");
    monitor->stopMonitoring();
    fs::remove(folder / "new");
}

void useTools(const fs::path& noProgram) {
    using enum CorbelKit::SendNewline;
    std::ofstream(noProgram) << "no program";
    fs::permissions(noProgram, fs::perms::owner_all);
    for (int round = 0; round < 100; ++round) { // whoever could read the line feed is gone
        CorbelKit::runTool("x", noProgram, yes);
        CorbelKit::runTool("x", "/bin/true", yes);
        CorbelKit::runTool("exec <&-; echo", "/bin/sh", yes);
    }
    require(CorbelKit::runTool("cat; echo end", "/bin/sh", yes) == "\nend\n",
            "a tool gets the line feed, and then the end");
}

void useUserData(const fs::path& file) {
    const auto url = Platform::URL::file(file.string());
    Platform::UndoManager undoManager;
    CorbelKit::UserDataList<Note> notes(url, undoManager);
    require(!notes.load(), "there is nothing to load yet");
    for (const char* text : {"a", "b", "c"})
        notes.put(Note(text), notes.items().size(), "Add");
    notes.remove(notes.items().front().uuid, "Delete");
    undoManager.undo();
    CorbelKit::UserDataList<Note> again(url, undoManager);
    require(!again.load(), "what was saved is loaded");
    require(textsOf(again.items()) == std::vector<std::string>{"a", "b", "c"},
            "what was taken back is saved");
}

} // namespace

int main(int /*count*/, char** arguments) {
    const fs::path folder = arguments[1]; // empty, and the program's own
    fs::create_directories(folder / "watched");
    useMonitor<CorbelKit::SingleFolderMonitor>(folder / "watched");
    useMonitor<CorbelKit::FileSystemMonitor>(folder / "watched");
    useTools(folder / "tool");
    useUserData(folder / "Notes.plist");
    std::cout << "The kit holds." << std::endl;
}
