#include "CorbelKitInterface/Controls.h"

#include <utility>

namespace CorbelKit {

View::View(std::shared_ptr<const NativeView> native)
    : native_(std::move(native)) {}

const NativeView& View::native() const {
    return *native_;
}

} // namespace CorbelKit
