#include "CorbelKitInterface/Linux/AlertDialog.h"
#include "CorbelKitInterface/Linux/Toolkit.h"
#include "Platform/AlertPresenter.h"
#include "Platform/MainThread.h"

#include <future>

namespace CorbelKit {
namespace {

bool showAlert(const Platform::Alert& alert) {
    if (!Toolkit::start())
        return false;
    AlertDialog(alert).run();
    return true;
}

bool showAlertFromAnyThread(const Platform::Alert& alert) {
    if (Platform::MainThread::isCurrent())
        return showAlert(alert);
    std::promise<bool> isShown;
    Platform::MainThread::run([&] { isShown.set_value(showAlert(alert)); });
    return isShown.get_future().get();
}

} // namespace
} // namespace CorbelKit

/// By this name the linker takes this file into every program of the library.
extern "C" const bool corbelKitInterfaceAlerts = [] {
    Platform::setAlertPresenter(CorbelKit::showAlertFromAnyThread);
    return true;
}();
