#include "CorbelKitInterface/AllowBackgroundItem.h"

#include "CorbelKit/Services/ResourceBundle.h"
#include "CorbelKitInterface/AllowBackgroundItemWindowController.h"
#include "Platform/Alert.h"
#include "Platform/MainThread.h"
#include "Platform/NeverDestroyed.h"

#include <string>
#include <utility>

namespace CorbelKit {
namespace {

constexpr auto storyboardName = "AllowBackgroundItem";

std::shared_ptr<AllowBackgroundItemWindowController> makeController() {
    auto scene = Storyboard::instantiateInitialController(
        storyboardName, resourceBundle(), AllowBackgroundItemWindowController::className);
    return scene ? AllowBackgroundItemWindowController::make(std::move(*scene)) : nullptr;
}

} // namespace

void AllowBackgroundItem::show() {
    Platform::MainThread::check();
    static const Platform::NeverDestroyed<std::shared_ptr<AllowBackgroundItemWindowController>>
        kept;
    Platform::whenNoAlertIsUp([] {
        auto& controller = kept.get();
        if (!controller)
            controller = makeController();
        if (controller)
            controller->showWindow();
    });
}

} // namespace CorbelKit
