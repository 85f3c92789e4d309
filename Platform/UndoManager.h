#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace Platform {

/// What the user can take back, and take back that. Main thread.
class UndoManager {
public:
    UndoManager();
    ~UndoManager();
    UndoManager(const UndoManager&) = delete;
    UndoManager& operator=(const UndoManager&) = delete;
    UndoManager(UndoManager&&) = delete;
    UndoManager& operator=(UndoManager&&) = delete;

    /// Registers what takes the present change back: as a step of its own, after which there is
    /// nothing to redo; or, within `undo` and `redo`, as a part of the step the other way. The name
    /// says, in the user's language, what is taken back ("Delete Note"). A handler may do anything
    /// with the manager, and end it; an empty one takes nothing back, and is no step.
    void registerUndo(std::string_view actionName, std::function<void()> handler);

    /// Takes the last step back, or does nothing where there is none.
    void undo();
    /// Takes back what was undone last; does nothing where nothing was, or something else was done
    /// since.
    void redo();

    /// @{
    /// Whether there is a step that `undo`, or `redo`, takes back.
    bool canUndo() const;
    bool canRedo() const;
    /// @}

    /// @{
    /// Whether the call is made within `undo`, or `redo`.
    bool isUndoing() const;
    bool isRedoing() const;
    /// @}

    /// @{
    /// Empty where there is nothing to undo or redo.
    std::string undoActionName() const;
    std::string redoActionName() const;
    /// @}

    /// Forgets all steps: nothing can be undone or redone, but for what a handler under way still
    /// registers.
    void removeAllActions();

private:
    class Impl;
    std::shared_ptr<Impl> impl_;
};

} // namespace Platform
