#include "Platform/Alert.h"

#include "Platform/AlertPresenter.h"
#include "Platform/MainThread.h"
#include "Platform/Native/AlertLine.h"

#include <future>
#include <memory>
#include <utility>

namespace Platform {

void setAlertPresenter(AlertPresenter presenter) {
    AlertLine::shared().setPresenter(std::move(presenter));
}

void endAlerts() {
    MainThread::check();
    AlertLine::shared().end();
}

void runModal(const Alert& alert) {
    if (MainThread::isCurrent()) {
        AlertLine::shared().run(alert);
        return;
    }
    const auto isDismissed = std::make_shared<std::promise<void>>(); // the notifier may outlast us
    AlertLine::shared().add(alert, [isDismissed] { isDismissed->set_value(); });
    isDismissed->get_future().wait();
}

void showAlert(const Alert& alert, std::function<void()> dismissed) {
    auto onMainThread = [dismissed = std::move(dismissed)] {
        if (dismissed)
            MainThread::run(dismissed);
    };
    AlertLine::shared().add(alert, std::move(onMainThread));
}

void whenNoAlertIsUp(std::function<void()> task) {
    MainThread::check();
    AlertLine::shared().whenEmpty(std::move(task));
}

} // namespace Platform
