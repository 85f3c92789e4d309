// A program of somebody else that uses the kit from queues to user data, and says what went wrong.
// Nothing is prepared for the kit here: signals have their default effect, and memory is the
// program's own affair.

#include <CorbelKit/Monitors/FileSystemMonitor.h>
#include <CorbelKit/Monitors/SingleFolderMonitor.h>
#include <CorbelKit/Services/RunTool.h>
#include <CorbelKit/Services/UserDataList.h>
#include <Platform/DispatchQueue.h>
#include <Platform/UserDefaults.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <iostream>
#include <memory>
#include <string>

namespace {

namespace fs = std::filesystem;

void require(bool holds, const char* what) {
    if (!holds) {
        std::cerr << "failed: " << what << std::endl;
        std::exit(EXIT_FAILURE);
    }
}

/// Something that happens on another thread.
class Event {
public:
    void happen() {
        if (!hasHappened_.exchange(true))
            promise_.set_value();
    }

    bool wait() {
        return promise_.get_future().wait_for(std::chrono::seconds(20)) ==
               std::future_status::ready;
    }

private:
    std::atomic<bool> hasHappened_ = false;
    std::promise<void> promise_;
};

struct Delegate final : CorbelKit::MonitorDelegate, Event {
    void monitorDidChange(const Platform::URL& /*url*/) override { happen(); }
};

struct Note {
    static Note decode(const CorbelKit::Decoder& decoder) {
        const auto container = decoder.container();
        return {.uuid = container.decode<Platform::UUID>("uuid"),
                .text = container.decode<std::string>("text")};
    }

    void encode(CorbelKit::Encoder& encoder) const {
        auto container = encoder.container();
        container.encode("uuid", uuid);
        container.encode("text", text);
    }

    Platform::UUID uuid = Platform::UUID::random();
    std::string text;
};

void useQueues() {
    const auto serial = Platform::DispatchQueue::serial("org.example.serial");
    const auto concurrent = Platform::DispatchQueue::concurrent("org.example.concurrent");
    constexpr int rounds = 1000;
    const auto left = std::make_shared<std::atomic<int>>(3 * rounds);
    const auto done = std::make_shared<Event>();
    const auto end = [left, done] {
        if (--*left == 0)
            done->happen();
    };
    for (int round = 0; round < rounds; ++round) {
        serial.async(end);
        concurrent.async(end);
        concurrent.asyncAfter(std::chrono::milliseconds(round % 3), end);
    }
    require(done->wait(), "every task runs");
}

template <class Monitor>
void useMonitor(const fs::path& folder) {
    const auto delegate = std::make_shared<Delegate>();
    const auto monitor = Monitor::make(Platform::URL::file(folder.string()));
    monitor->setDelegate(delegate);
    std::ofstream(folder / "new") << "new";
    require(delegate->wait(), "a monitor reports a new file");
    monitor->stopMonitoring();
    fs::remove(folder / "new");
}

void useSettings() {
    auto& settings = Platform::UserDefaults::standard();
    Event change;
    const auto observation = settings.observe("Key", [&](const auto& /*key*/, const auto& value) {
        if (value)
            change.happen();
    });
    require(!settings.set("Key", std::string("value")), "a setting is stored");
    require(settings.string("Key") == "value", "a setting is read");
    require(change.wait(), "an observer is called");
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
        notes.put({.text = text}, notes.items().size(), "Add");
    notes.remove(notes.items().front().uuid, "Delete");
    undoManager.undo();
    CorbelKit::UserDataList<Note> again(url, undoManager);
    require(!again.load(), "what was saved is loaded");
    std::string texts;
    for (const auto& note : again.items())
        texts += note.text;
    require(texts == "abc", "what was taken back is saved");
}

} // namespace

int main(int /*count*/, char** arguments) {
    const fs::path folder = arguments[1]; // empty, and the program's own
    fs::create_directories(folder / "watched");
    useQueues();
    useMonitor<CorbelKit::SingleFolderMonitor>(folder / "watched");
    useMonitor<CorbelKit::FileSystemMonitor>(folder / "watched");
    useSettings();
    useTools(folder / "tool");
    useUserData(folder / "Notes.plist");
    std::cout << "The kit holds." << std::endl;
}
