#include "CorbelKit/Services/HelperToolAlert.h"

#include "CorbelKit/Services/ResourceBundle.h"
#include "Platform/Alert.h"
#include "Platform/MainThread.h"
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
    Platform::MainThread::run([dismissed = std::move(dismissed)] {
        Platform::runModal({.messageText = texts().message,
                            .informativeText = texts().information,
                            .buttonTitle = localizedString("OK"),
                            .style = Platform::Alert::Style::critical});
        if (dismissed)
            dismissed();
    });
}

} // namespace CorbelKit
