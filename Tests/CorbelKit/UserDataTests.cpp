#include "CorbelKit/Services/UserDataList.h"
#include "Tests/CorbelKit/Note.h"
#include "Tests/Support/Testing.h"

#include <future>

using namespace CorbelKit;
using namespace TestSupport;

namespace {

using Notes = UserDataList<Note>;
using Strings = std::vector<std::string>;

class UserData : public ::testing::Test {
protected:
    /// What is in the file when all saves requested so far have ended.
    Strings saved() const {
        std::promise<void> done;
        QueuedSave::shared().whenSaved([&] { done.set_value(); });
        done.get_future().wait();
        return loaded();
    }

    Strings loaded() const {
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
    QueuedSave::shared().write({}, fileURL(folder / "nobody asks"), nullptr);
    values.clear();
    EXPECT_EQ(saved(), Strings{"short"});
}

TEST_F(UserData, IsNotReplacedByASaveThatWasRequestedBefore) {
    std::promise<void> open;
    QueuedSave::shared().whenSaved([gate = open.get_future().share()] { gate.wait(); });
    QueuedSave::shared().save(std::vector{Note("old")}, url);
    EXPECT_EQ(loaded(), Strings{"old"}); // on its way, and seen
    notes.put(Note("queued"), 0, "Add");
    notes.put(Note("now"), 0, "Add");
    EXPECT_FALSE(notes.saveSynchronously());
    writeFile(folder / "seen", contentOf(folder / "Notes.plist"));
    open.set_value();
    saved();
    EXPECT_EQ(contentOf(folder / "Notes.plist"), contentOf(folder / "seen"));
    EXPECT_EQ(loaded(), (Strings{"now", "queued"}));
}

TEST_F(UserData, ThatWasNotUnderstoodIsSetAsideByTheFirstSave) {
    EXPECT_FALSE(notes.load()); // nothing there yet
    const std::pair<const char*, const char*> cases[] = {
        {"bplist00", "not a valid property list"},
        {R"(({text = "a";}))", "[0]: No value associated with key \"uuid\""},
    };
    for (const auto& [content, reason] : cases) {
        const auto file = folder / "Broken.plist";
        writeFile(file, content);
        Notes list(fileURL(file), undoManager);
        EXPECT_THAT(list.load().value().description, testing::HasSubstr(reason));
        EXPECT_TRUE(list.items().empty());
        EXPECT_EQ(contentOf(file), content); // whoever only looks moves nothing
        list.put(Note("new"), 0, "Add");
        list.put(Note("newer"), 1, "Add");
        saved();
        EXPECT_EQ(textsOf(*UserDataFile::load<Note>(fileURL(file))), (Strings{"new", "newer"}));
    }
    Strings kept;
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        if (entry.path().filename().string().starts_with("Broken (unreadable "))
            kept.push_back(contentOf(entry.path()));
    }
    EXPECT_THAT(kept, testing::UnorderedElementsAre(cases[0].first, cases[1].first));
}

TEST_F(UserData, OfAnySizeThatIsSavedIsLoaded) {
    // More than what a reader takes of a stranger.
    const std::vector<Platform::PropertyList::Data> values(700,
                                                           Platform::PropertyList::Data(100'000));
    QueuedSave::shared().save(values, url);
    EXPECT_TRUE(*UserDataFile::load<Platform::PropertyList::Data>(url) == values);
}

TEST_F(UserData, WithoutAPlaceIsKeptInMemoryOnly) {
    Notes nowhere(std::nullopt, undoManager);
    EXPECT_FALSE(nowhere.load());
    nowhere.put(Note("a"), 0, "Add");
    nowhere.saveSynchronously();
    EXPECT_EQ(textsOf(nowhere.items()), Strings{"a"});
}

TEST_F(UserData, SaysWhatCausedEachChange) {
    std::vector<Notes::Cause> causes;
    notes.setObserver([&](const auto&, auto cause) { causes.push_back(cause); });
    const Note note("a");
    notes.put(note, 7, "Add");
    notes.remove(note.uuid, "Delete");
    notes.remove(note.uuid, "Delete"); // nothing to take back
    undoManager.undo();
    EXPECT_EQ(undoManager.redoActionName(), "Delete");
    undoManager.redo();
    using enum Notes::Cause;
    EXPECT_EQ(causes, (std::vector{edit, edit, undo, redo}));
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
        std::promise<std::optional<Platform::PropertyList>> found;
        SavedUndoItems::shared().find(note.uuid, Platform::DispatchQueue::serial("test"),
                                      [&](const auto& item) { found.set_value(item); });
        return found.get_future().get();
    };
    EXPECT_EQ(decoded<Note>(find().value(), CodingFormat::propertyList)->text, "before");
    undoManager.undo();
    EXPECT_EQ(decoded<Note>(find().value(), CodingFormat::propertyList)->text, "after");
    undoManager.removeAllActions(); // nothing brings it back any more
    EXPECT_FALSE(find());
}

} // namespace
