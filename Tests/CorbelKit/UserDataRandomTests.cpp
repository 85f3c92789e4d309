#include "CorbelKit/Services/UserDataList.h"
#include "Tests/CorbelKit/Note.h"
#include "Tests/Support/Testing.h"

#include <algorithm>
#include <random>

using namespace CorbelKit;
using namespace TestSupport;

namespace {

using Notes = UserDataList<Note>;

/// What the list is to be like: states, as plain as can be.
struct Model {
    using State = std::vector<std::pair<Platform::UUID, std::string>>;

    State now, saved;
    std::vector<State> undoable, redoable;

    void change(State next) {
        undoable.push_back(std::exchange(now, std::move(next)));
        redoable.clear();
    }

    static bool step(std::vector<State>& from, std::vector<State>& to, State& state) {
        if (from.empty())
            return false;
        to.push_back(std::exchange(state, from.back()));
        from.pop_back();
        return true;
    }
};

Model::State stateOf(const std::vector<Note>& notes) {
    Model::State state;
    for (const auto& note : notes)
        state.emplace_back(note.uuid, note.text);
    return state;
}

class UserDataRandom : public ::testing::Test {
protected:
    UserDataRandom() { begin(); }

    /// As a program that is started again.
    void begin() {
        notes.reset();
        undoManager = std::make_unique<Platform::UndoManager>();
        notes = std::make_unique<Notes>(fileURL(folder / "data/Notes.plist"), *undoManager);
        EXPECT_FALSE(notes->load());
        notes->setObserver([this](const auto& identifier, auto) { reported = identifier; });
        model = {.now = model.saved, .saved = model.saved, .undoable = {}, .redoable = {}};
    }

    std::size_t any() { return random() % model.now.size(); }

    void put(const Note note) {
        const auto index = random() % (model.now.size() + 2);
        auto next = model.now;
        std::erase_if(next, [&](const auto& item) { return item.first == note.uuid; });
        next.emplace(next.begin() + static_cast<std::ptrdiff_t>(std::min(index, next.size())),
                     note.uuid, note.text);
        notes->put(note, index, "Put");
        EXPECT_EQ(reported, note.uuid);
        model.change(std::move(next));
    }

    void remove(std::size_t index) {
        auto next = model.now;
        next.erase(next.begin() + static_cast<std::ptrdiff_t>(index));
        // References into the list itself, as whoever shows it has them at hand.
        const auto& note = notes->items()[index];
        notes->remove(note.uuid, note.text);
        EXPECT_EQ(reported, model.now[index].first);
        EXPECT_EQ(undoManager->undoActionName(), model.now[index].second);
        model.change(std::move(next));
    }

    /// Whether there was anything to change.
    bool change() {
        const auto kind = model.now.empty() ? 0 : random() % 16;
        if (kind < 3 && model.now.size() < 12) {
            put(Note(std::to_string(random())));
        } else if (kind == 3) {
            put(Note("no text\xFF")); // which no file can hold
        } else if (kind < 6) {
            put(Note(std::to_string(random()), model.now[any()].first));
        } else if (kind < 8) {
            put(notes->items()[any()]);
        } else if (kind < 11) {
            remove(any());
        } else if (kind < 14) {
            undoManager->undo();
            return Model::step(model.undoable, model.redoable, model.now);
        } else {
            undoManager->redo();
            return Model::step(model.redoable, model.undoable, model.now);
        }
        return true;
    }

    bool isSavable() const {
        return std::ranges::none_of(model.now,
                                    [](const auto& item) { return item.second.ends_with('\xFF'); });
    }

    const EnvironmentVariable inMemory{
        "TMPDIR", fs::exists("/dev/shm") ? std::optional<std::string>("/dev/shm") : std::nullopt};
    TemporaryFolder folder;
    const unsigned seed = std::random_device()();
    std::mt19937 random{seed};
    Model model;
    Platform::UUID reported{{}};
    std::unique_ptr<Platform::UndoManager> undoManager;
    std::unique_ptr<Notes> notes;
};

TEST_F(UserDataRandom, AgreesInMemoryOnDiskAndInWhatCanBeUndone) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::cout << "seed " << seed << std::endl;
    fs::create_directory(folder / "data");
    testing::internal::CaptureStderr();
    for (int step = 0; step < 10'000 && !HasFailure(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        if (random() % 50 == 0)
            begin();
        const bool isPlaceGone = random() % 10 == 0;
        if (isPlaceGone)
            fs::rename(folder / "data", folder / "away");
        const bool isChanged = change();
        EXPECT_EQ(stateOf(notes->items()), model.now);
        EXPECT_EQ(undoManager->canUndo(), !model.undoable.empty());
        EXPECT_EQ(undoManager->canRedo(), !model.redoable.empty());
        // Which sees what is on its way there to its end.
        auto saved = UserDataFile::load<Note>(notes->url());
        if (isPlaceGone) {
            fs::rename(folder / "away", folder / "data");
            saved = UserDataFile::load<Note>(notes->url());
        } else if (isChanged && isSavable()) {
            model.saved = model.now;
        }
        EXPECT_EQ(stateOf(*saved), model.saved);
    }
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("not UTF-8"));
}

} // namespace
