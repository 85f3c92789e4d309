#include "CorbelKit/Services/HelperToolAlert.h"

#include "CorbelKit/Services/ResourceBundle.h"
#include "Platform/Alert.h"
#include "Platform/NeverDestroyed.h"

#include <string>
#include <utility>

namespace CorbelKit {
namespace {

struct Texts {
    std::string message = localizedString("Could not establish communication with helper tool.");
    std::string information =
        localizedString("Try your operation again. If that fails, quit and relaunch the "
                        "application and try again.");
};

const Texts& texts() {
    static const Platform::NeverDestroyed<Texts> texts;
    return texts.get();
}

} // namespace

void showHelperToolAlert(std::function<void()> dismissed) {
    texts(); // as they are in the language of the first use
    Platform::showAlert({.messageText = texts().message,
                         .informativeText = texts().information,
                         .buttonTitle = localizedString("OK"),
                         .style = Platform::Alert::Style::critical},
                        std::move(dismissed));
}

} // namespace CorbelKit
