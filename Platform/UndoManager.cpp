#include "Platform/UndoManager.h"

#include "Platform/MainThread.h"

#include <cstdint>
#include <ranges>
#include <utility>
#include <vector>

namespace Platform {

class UndoManager::Impl {
public:
    struct Step {
        std::string actionName;
        std::vector<std::function<void()>> handlers; // in the order of their registration
    };

    using Stack = std::vector<Step>;

    enum class Activity : std::uint8_t { none, undoing, redoing };

    void add(std::string_view actionName, std::function<void()> handler) {
        auto& stack = activity == Activity::undoing ? redoable : undoable;
        // What a handler owns may come back here when it goes.
        const auto forgotten = activity == Activity::none ? std::exchange(redoable, {}) : Stack();
        if (!isStepOpen)
            stack.emplace_back();
        isStepOpen = activity != Activity::none;
        stack.back().actionName = actionName;
        stack.back().handlers.push_back(std::move(handler));
    }

    // What the handlers register makes up one step the other way.
    void takeBack(Stack& stack, Activity direction) {
        if (stack.empty() || activity != Activity::none)
            return;
        const auto step = std::move(stack.back());
        stack.pop_back();
        activity = direction;
        const std::shared_ptr<void> ending(nullptr, [this](void*) { // also by an exception
            activity = Activity::none;
            isStepOpen = false;
        });
        for (const auto& handler : step.handlers | std::views::reverse)
            handler();
    }

    void forgetAll() {
        const auto forgotten = std::pair(std::exchange(undoable, {}), std::exchange(redoable, {}));
        isStepOpen = false;
    }

    Stack undoable;
    Stack redoable;
    Activity activity = Activity::none;
    bool isStepOpen = false;
};

UndoManager::UndoManager()
    : impl_(std::make_shared<Impl>()) {}

UndoManager::~UndoManager() = default;

void UndoManager::registerUndo(std::string_view actionName, std::function<void()> handler) {
    MainThread::check();
    if (handler)
        impl_->add(actionName, std::move(handler));
}

void UndoManager::undo() {
    MainThread::check();
    const auto impl = impl_; // a handler may end the manager
    impl->takeBack(impl->undoable, Impl::Activity::undoing);
}

void UndoManager::redo() {
    MainThread::check();
    const auto impl = impl_;
    impl->takeBack(impl->redoable, Impl::Activity::redoing);
}

bool UndoManager::canUndo() const {
    return !impl_->undoable.empty();
}

bool UndoManager::canRedo() const {
    return !impl_->redoable.empty();
}

bool UndoManager::isUndoing() const {
    return impl_->activity == Impl::Activity::undoing;
}

bool UndoManager::isRedoing() const {
    return impl_->activity == Impl::Activity::redoing;
}

std::string UndoManager::undoActionName() const {
    return canUndo() ? impl_->undoable.back().actionName : std::string();
}

std::string UndoManager::redoActionName() const {
    return canRedo() ? impl_->redoable.back().actionName : std::string();
}

void UndoManager::removeAllActions() {
    impl_->forgetAll();
}

} // namespace Platform
