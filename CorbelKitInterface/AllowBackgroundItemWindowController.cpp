#include "CorbelKitInterface/AllowBackgroundItemWindowController.h"

#include "Platform/MainThread.h"

#include <utility>

namespace CorbelKit {

std::shared_ptr<AllowBackgroundItemWindowController>
AllowBackgroundItemWindowController::make(WindowScene scene) {
    Platform::MainThread::check();
    // The constructor is private, which keeps std::make_shared out.
    std::shared_ptr<AllowBackgroundItemWindowController> controller(
        new AllowBackgroundItemWindowController(std::move(scene))); // NOLINT(*-owning-memory)
    controller->windowDidLoad();
    return controller;
}

AllowBackgroundItemWindowController::AllowBackgroundItemWindowController(WindowScene scene)
    : scene_(std::move(scene))
    , viewController_([this] { close(); }) {}

void AllowBackgroundItemWindowController::windowDidLoad() {
    scene_.setDelegate(weak_from_this());
    viewController_.connect(scene_);
    viewController_.viewDidLoad();
}

void AllowBackgroundItemWindowController::showWindow() {
    Platform::MainThread::check();
    scene_.showWindow();
    viewController_.viewDidAppear();
}

void AllowBackgroundItemWindowController::close() {
    Platform::MainThread::check();
    scene_.close();
}

void AllowBackgroundItemWindowController::windowDidResignKey() {
    close();
}

} // namespace CorbelKit
