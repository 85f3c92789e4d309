#include "CorbelKit/Services/UserDataList.h"
#include "Tests/CorbelKit/Note.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/WaitUntil.h"

#include <gtest/gtest.h>

#include <atomic>

using namespace CorbelKit;
using Platform::UndoManager;
using Platform::URL;

namespace {

using Notes = UserDataList<Note>;
using Strings = std::vector<std::string>;

class UserData : public ::testing::Test {
protected:
    /// Waits until all saves requested so far have ended.
    void finishSaves() const {
        std::atomic<bool> done = false;
        QueuedSave::shared().write({}, URL::file((folder / "fence").string()),
                                   [&](const auto& /*error*/) { done = true; });
        EXPECT_TRUE(TestSupport::waitUntil([&] { return done.load(); }));
    }

    Strings saved() const {
        const auto items = UserDataFile::load<Note>(url);
        EXPECT_TRUE(items) << items.error().description;
        return items ? textsOf(*items) : Strings();
    }

    TestSupport::TemporaryFolder folder;
    const URL url = URL::file((folder / "Notes.plist").string());
};

TEST_F(UserData, IsSavedInTheOrderAndWithTheValueOfEachRequest) {
    std::vector<Note> notes;
    const std::string padding(100'000, 'x'); // a later, shorter save must leave nothing of it
    for (int round = 0; round < 50; ++round) {
        notes = {Note(padding + std::to_string(round))};
        QueuedSave::shared().save(notes, url);
    }
    notes = {Note("short")};
    QueuedSave::shared().save(notes, url);
    notes.clear();
    finishSaves();
    EXPECT_EQ(saved(), Strings{"short"});
}

TEST_F(UserData, LoadsNothingBeforeTheFirstSaveAndNothingBroken) {
    UndoManager undoManager;
    EXPECT_FALSE(Notes(url, undoManager).load());
    EXPECT_FALSE(Notes(std::nullopt, undoManager).load());
    std::filesystem::create_directory(folder / "folder");
    TestSupport::writeFile(folder / "broken", "bplist00");
    TestSupport::writeFile(folder / "other", R"(({text = "a";}))");
    const std::pair<const char*, const char*> cases[] = {
        {"folder", "not a file"},
        {"broken", "not a valid property list"},
        {"other", "[0]: No value associated with key \"uuid\""},
    };
    for (const auto& [name, reason] : cases) {
        Notes notes(URL::file((folder / name).string()), undoManager);
        const auto error = notes.load();
        ASSERT_TRUE(error) << name;
        EXPECT_NE(error->description.find(reason), std::string::npos) << error->description;
        EXPECT_TRUE(notes.items().empty());
    }
}

TEST_F(UserData, WithoutAPlaceIsKeptInMemoryOnly) {
    UndoManager undoManager;
    Notes notes(std::nullopt, undoManager);
    notes.put(Note("a"), 0, "Add");
    notes.saveSynchronously();
    finishSaves();
    EXPECT_EQ(textsOf(notes.items()), Strings{"a"});
    EXPECT_FALSE(std::filesystem::exists(folder / "Notes.plist"));
}

TEST_F(UserData, TakesEveryChangeBackAndForthAndSavesIt) {
    UndoManager undoManager;
    Notes notes(url, undoManager);
    std::vector<Notes::Cause> causes;
    notes.setObserver([&](const auto& /*identifier*/, auto cause) { causes.push_back(cause); });
    Note a("a");
    notes.put(a, 0, "Add");
    notes.put(Note("b"), 7, "Add");
    a.text = "A";
    notes.put(a, 0, "Edit");
    notes.remove(a.uuid, "Delete");
    notes.remove(a.uuid, "Delete"); // nothing to take back
    EXPECT_EQ(undoManager.undoActionName(), "Delete");
    EXPECT_FALSE(undoManager.canRedo());

    const Strings states[] = {{"b"}, {"A", "b"}, {"a", "b"}, {"a"}, {}};
    for (const auto& state : states) {
        EXPECT_EQ(textsOf(notes.items()), state);
        undoManager.undo();
    }
    EXPECT_FALSE(undoManager.canUndo());
    EXPECT_EQ(undoManager.redoActionName(), "Add");
    for (int step = 0; step < 3; ++step)
        undoManager.redo();
    EXPECT_EQ(undoManager.redoActionName(), "Delete");
    EXPECT_EQ(textsOf(notes.items()), (Strings{"A", "b"}));
    notes.put(Note("c"), 1, "Add");
    EXPECT_FALSE(undoManager.canRedo());
    finishSaves();
    EXPECT_EQ(saved(), (Strings{"A", "c", "b"}));
    using enum Notes::Cause;
    EXPECT_EQ(causes, (std::vector{edit, edit, edit, edit, undo, undo, undo, undo, redo, redo, redo,
                                   edit}));
}

TEST_F(UserData, CanGoBeforeWhatCouldBeUndoneInIt) {
    UndoManager undoManager;
    {
        Notes notes(url, undoManager);
        notes.put(Note("a"), 0, "Add");
    }
    undoManager.undo();
    finishSaves();
    EXPECT_EQ(saved(), Strings{"a"});
}

TEST_F(UserData, RemembersWhatAChangeTookThePlaceOf) {
    UndoManager undoManager;
    Notes notes(url, undoManager);
    Note note("before");
    notes.put(note, 0, "Add");
    note.text = "after";
    notes.put(note, 0, "Edit");
    const auto find = [&] {
        std::atomic<bool> done = false;
        std::optional<Platform::PropertyList> found;
        SavedUndoItems::shared().find(note.uuid, Platform::DispatchQueue::serial("test"),
                                      [&](const auto& item) {
                                          found = item;
                                          done = true;
                                      });
        EXPECT_TRUE(TestSupport::waitUntil([&] { return done.load(); }));
        return found;
    };
    const auto item = find();
    ASSERT_TRUE(item);
    EXPECT_EQ(decoded<Note>(*item, CodingFormat::propertyList)->text, "before");
    SavedUndoItems::shared().forget(note.uuid);
    EXPECT_FALSE(find());
}

} // namespace
