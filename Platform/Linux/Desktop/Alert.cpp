#include "Platform/Alert.h"

#include "Platform/Linux/Desktop/AlertPresenter.h"
#include "Platform/Linux/Text/TerminalLine.h"
#include "Platform/NeverDestroyed.h"

#include <iostream>
#include <mutex>
#include <utility>

namespace Platform {
namespace {

/// The one of this process.
class PresenterInUse {
public:
    static PresenterInUse& shared() {
        static const NeverDestroyed<PresenterInUse> instance;
        return instance.get();
    }

    void set(AlertPresenter presenter) {
        const std::lock_guard lock(mutex_);
        presenter_ = std::move(presenter);
    }

    // A copy: an alert stays for as long as the user likes, which no lock should.
    AlertPresenter get() {
        const std::lock_guard lock(mutex_);
        return presenter_;
    }

private:
    std::mutex mutex_;
    AlertPresenter presenter_; // mutex_
};

} // namespace

void setAlertPresenter(AlertPresenter presenter) {
    PresenterInUse::shared().set(std::move(presenter));
}

void runModal(const Alert& alert) {
    const auto present = PresenterInUse::shared().get();
    if (present && present(alert))
        return;
    std::cerr << terminalLine({alert.messageText, alert.informativeText}, ": ");
    std::cerr.clear(); // a terminal that is gone today is no reason to be silent tomorrow
}

} // namespace Platform
