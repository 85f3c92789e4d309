#include "CorbelKit/Services/UserDataList.h"
#include "Tests/CorbelKit/Note.h"
#include "Tests/Support/Testing.h"

using namespace CorbelKit;
using namespace TestSupport;

namespace {

using Notes = UserDataList<Note>;
using Strings = std::vector<std::string>;

class UserData : public ::testing::Test {
protected:
    /// What is in the file when all saves requested so far have ended.
    Strings saved() const {
        std::atomic<bool> done = false;
        QueuedSave::shared().write({}, fileURL(folder / "fence"),
                                   [&](const auto&) { done = true; });
        EXPECT_TRUE(waitUntil(done));
        const auto items = UserDataFile::load<Note>(url);
        return items ? textsOf(*items) : Strings{items.error().description};
    }

    TemporaryFolder folder;
    const Platform::URL url = fileURL(folder / "Notes.plist");
    Platform::UndoManager undoManager;
    Notes notes{url, undoManager};
};

TEST_F(UserData, IsSavedInTheOrderAndWithTheValueOfEachRequest) {
    std::vector<Note> values;
    const std::string padding(100'000, 'x'); // a later, shorter save must leave nothing of it
    for (int round = 0; round < 50; ++round) {
        values = {Note(padding + std::to_string(round))};
        QueuedSave::shared().save(values, url);
    }
    values = {Note("short")};
    QueuedSave::shared().save(values, url);
    values.clear();
    EXPECT_EQ(saved(), Strings{"short"});
}

TEST_F(UserData, LoadsNothingBeforeTheFirstSaveAndNothingBroken) {
    EXPECT_FALSE(notes.load());
    fs::create_directory(folder / "folder");
    writeFile(folder / "broken", "bplist00");
    writeFile(folder / "other", R"(({text = "a";}))");
    const std::pair<const char*, const char*> cases[] = {
        {"folder", "not a file"},
        {"broken", "not a valid property list"},
        {"other", "[0]: No value associated with key \"uuid\""},
    };
    for (const auto& [name, reason] : cases) {
        Notes list(fileURL(folder / name), undoManager);
        const auto error = list.load();
        ASSERT_TRUE(error) << name;
        EXPECT_THAT(error->description, testing::HasSubstr(reason));
        EXPECT_TRUE(list.items().empty());
    }
}

TEST_F(UserData, WithoutAPlaceIsKeptInMemoryOnly) {
    Notes nowhere(std::nullopt, undoManager);
    EXPECT_FALSE(nowhere.load());
    nowhere.put(Note("a"), 0, "Add");
    nowhere.saveSynchronously();
    EXPECT_EQ(textsOf(nowhere.items()), Strings{"a"});
}

TEST_F(UserData, TakesEveryChangeBackAndForthAndSavesIt) {
    std::vector<Notes::Cause> causes;
    notes.setObserver([&](const auto&, auto cause) { causes.push_back(cause); });
    Note a("a");
    notes.put(a, 0, "Add");
    notes.put(Note("b"), 7, "Add");
    a.text = "A";
    notes.put(a, 0, "Edit");
    notes.remove(a.uuid, "Delete");
    notes.remove(a.uuid, "Delete"); // nothing to take back
    EXPECT_EQ(undoManager.undoActionName(), "Delete");

    for (const auto& state : {Strings{"b"}, {"A", "b"}, {"a", "b"}, {"a"}, {}}) {
        EXPECT_EQ(textsOf(notes.items()), state);
        undoManager.undo();
    }
    EXPECT_FALSE(undoManager.canUndo());
    for (int step = 0; step < 3; ++step)
        undoManager.redo();
    EXPECT_EQ(undoManager.redoActionName(), "Delete");
    EXPECT_EQ(textsOf(notes.items()), (Strings{"A", "b"}));
    notes.put(Note("c"), 1, "Add");
    EXPECT_EQ(saved(), (Strings{"A", "c", "b"}));
    using enum Notes::Cause;
    EXPECT_EQ(causes, (std::vector{edit, edit, edit, edit, undo, undo, undo, undo, redo, redo, redo,
                                   edit}));
}

TEST_F(UserData, CanGoBeforeWhatCouldBeUndoneInIt) {
    Notes(url, undoManager).put(Note("a"), 0, "Add");
    undoManager.undo();
    EXPECT_EQ(saved(), Strings{"a"});
}

TEST_F(UserData, RemembersWhatAChangeTookThePlaceOf) {
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
        EXPECT_TRUE(waitUntil(done));
        return found;
    };
    EXPECT_EQ(decoded<Note>(find().value(), CodingFormat::propertyList)->text, "before");
    SavedUndoItems::shared().forget(note.uuid);
    EXPECT_FALSE(find());
}

} // namespace
