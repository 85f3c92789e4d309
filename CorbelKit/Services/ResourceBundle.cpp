#include "CorbelKit/Services/ResourceBundle.h"

#include "Platform/NeverDestroyed.h"

namespace CorbelKit {

const Platform::Bundle& resourceBundle() {
    static const Platform::NeverDestroyed<Platform::Bundle> bundle(
        Platform::Bundle::main().bundleURL().appending("Contents/Frameworks/CorbelKit.framework",
                                                       Platform::URL::DirectoryHint::isDirectory));
    return bundle.get();
}

std::string localizedString(std::string_view key) {
    return resourceBundle().localizedString(key);
}

} // namespace CorbelKit
