#include "Platform/UndoManager.h"

#include "Platform/MainThread.h"
#include "Platform/macOS/Boundary.h"
#include "Platform/macOS/Text.h"

#include <utility>

namespace Platform {

class UndoManager::Impl {
public:
    // The manager tells actions apart by a target, which it does not keep.
    NSObject* const target = [[NSObject alloc] init];
    NSUndoManager* const manager = [[NSUndoManager alloc] init];
};

UndoManager::UndoManager() {
    @autoreleasepool {
        impl_ = std::make_unique<Impl>();
        impl_->manager.groupsByEvent = NO;
    }
}

UndoManager::~UndoManager() = default;

void UndoManager::registerUndo(std::string_view actionName, std::function<void()> handler) {
    MainThread::check();
    @autoreleasepool {
        NSUndoManager* const manager = impl_->manager;
        // Within undo and redo the manager has a group open for all that is registered.
        const bool isStepOfItsOwn = !isUndoing() && !isRedoing();
        if (isStepOfItsOwn)
            [manager beginUndoGrouping];
        [manager registerUndoWithTarget:impl_->target
                                handler:^(id) {
                                    runAtBoundary(handler);
                                }];
        if (NSString* const name = foundationText(actionName))
            [manager setActionName:name];
        if (isStepOfItsOwn)
            [manager endUndoGrouping];
    }
}

void UndoManager::undo() {
    MainThread::check();
    @autoreleasepool {
        if (canUndo() && !isUndoing() && !isRedoing())
            [impl_->manager undo];
    }
}

void UndoManager::redo() {
    MainThread::check();
    @autoreleasepool {
        if (canRedo() && !isUndoing() && !isRedoing())
            [impl_->manager redo];
    }
}

bool UndoManager::canUndo() const {
    return impl_->manager.canUndo;
}

bool UndoManager::canRedo() const {
    return impl_->manager.canRedo;
}

bool UndoManager::isUndoing() const {
    return impl_->manager.undoing;
}

bool UndoManager::isRedoing() const {
    return impl_->manager.redoing;
}

std::string UndoManager::undoActionName() const {
    @autoreleasepool {
        return canUndo() ? portableText(impl_->manager.undoActionName) : std::string();
    }
}

std::string UndoManager::redoActionName() const {
    @autoreleasepool {
        return canRedo() ? portableText(impl_->manager.redoActionName) : std::string();
    }
}

void UndoManager::removeAllActions() {
    @autoreleasepool {
        [impl_->manager removeAllActions];
    }
}

} // namespace Platform
