#include "Platform/UndoManager.h"
#include "Tests/Support/Testing.h"

#include <stdexcept>

using Platform::UndoManager;

TEST(UndoManager, OutlivesWhateverItsHandlersDo) {
    auto manager = std::make_unique<UndoManager>();
    int redone = 0;
    const auto redo = [&] { ++redone; };
    manager->registerUndo("nothing", nullptr);
    EXPECT_FALSE(manager->canUndo());

    manager->registerUndo("forgotten", redo);
    manager->registerUndo("forgets", [&] {
        manager->registerUndo("forgotten as well", redo);
        manager->removeAllActions();
        manager->registerUndo("one", redo);
        manager->registerUndo("two", redo);
    });
    manager->undo();
    EXPECT_FALSE(manager->canUndo());
    EXPECT_EQ(manager->redoActionName(), "two");
    manager->redo();
    EXPECT_EQ(redone, 2);
    EXPECT_FALSE(manager->canRedo());

    manager->registerUndo("throws", [] { throw std::runtime_error("thrown"); });
    EXPECT_THROW(manager->undo(), std::runtime_error);
    EXPECT_FALSE(manager->isUndoing());

    // What a forgotten handler owned registers another when it goes.
    const auto owned = [&](const char* name) {
        return std::shared_ptr<void>(nullptr, [&manager, name](void*) {
            if (manager)
                manager->registerUndo(name, [] {});
        });
    };
    manager->registerUndo("owns", [owner = owned("left")] {});
    manager->removeAllActions();
    EXPECT_EQ(manager->undoActionName(), "left");

    manager->registerUndo("ends", [&] { manager.reset(); });
    manager->undo();
    EXPECT_FALSE(manager);
}
