#include "Platform/Native/NativeAlert.h"

namespace Platform {

// Windows are a library of their own, which brings its presenter.
AlertPresenter nativeAlertPresenter() {
    return {};
}

} // namespace Platform
