#include "Platform/Native/NativeAlert.h"

#include "Platform/MainThread.h"

#include <utility>

namespace Platform {

// Windows are a library of their own, which brings its presenter.
AlertPresenter nativeAlertPresenter() {
    return {};
}

// Each task of the queue is a source of its own, which GLib dispatches also in a loop in a loop.
void runBesideMainQueue(std::function<void()> task) {
    MainThread::run(std::move(task));
}

} // namespace Platform
