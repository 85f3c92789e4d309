#include "Platform/Alert.h"

#include "Platform/AlertPresenter.h"
#include "Platform/Mutex.h"
#include "Platform/Native/NativeAlert.h"
#include "Platform/NeverDestroyed.h"

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

    void set(AlertPresenter presenter) CORBEL_EXCLUDES(mutex_) {
        const MutexLock lock(mutex_);
        presenter_ = std::move(presenter);
    }

    // A copy: an alert stays for as long as the user likes, which no lock should.
    AlertPresenter get() CORBEL_EXCLUDES(mutex_) {
        const MutexLock lock(mutex_);
        return presenter_;
    }

private:
    Mutex mutex_;
    AlertPresenter presenter_ CORBEL_GUARDED_BY(mutex_);
};

} // namespace

void setAlertPresenter(AlertPresenter presenter) {
    PresenterInUse::shared().set(std::move(presenter));
}

void runModal(const Alert& alert) {
    const auto present = PresenterInUse::shared().get();
    if (!present || !present(alert))
        runNativeAlert(alert);
}

} // namespace Platform
