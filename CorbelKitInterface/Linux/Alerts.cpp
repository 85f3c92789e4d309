#include "CorbelKitInterface/Linux/AlertDialog.h"
#include "CorbelKitInterface/Linux/Toolkit.h"
#include "Platform/AlertPresenter.h"

namespace CorbelKit {
namespace {

bool runAlert(const Platform::Alert& alert) {
    if (!Toolkit::start())
        return false;
    AlertDialog(alert).run();
    return true;
}

} // namespace
} // namespace CorbelKit

/// By this name the linker takes this file into every program of the library.
extern "C" const bool corbelKitInterfaceAlerts = [] {
    Platform::setAlertPresenter(
        {.run = CorbelKit::runAlert, .dismissAll = CorbelKit::AlertDialog::dismissAll});
    return true;
}();
