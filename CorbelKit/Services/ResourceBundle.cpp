#include "CorbelKit/Services/ResourceBundle.h"

#include "Platform/FileManager.h"
#include "Platform/NeverDestroyed.h"

#include <array>

namespace CorbelKit {
namespace {

using Platform::URL;

/// From the main bundle, which is the program's own folder where it has none.
constexpr std::array places = {
    "Contents/Frameworks/CorbelKit.framework",
    "CorbelKit.framework",                    // a copy for a program that is moved
    "../share/CorbelKit/CorbelKit.framework", // installed together, wherever that is now
};

URL bundleURL() {
    const auto& main = Platform::Bundle::main().bundleURL();
    for (const auto* place : places) {
        auto url = main.appending(place, URL::DirectoryHint::isDirectory);
        if (Platform::FileManager::fileExists(url))
            return url;
    }
    return URL::file(CORBEL_KIT_BUNDLE, URL::DirectoryHint::isDirectory);
}

} // namespace

const Platform::Bundle& resourceBundle() {
    static const Platform::NeverDestroyed<Platform::Bundle> bundle(bundleURL());
    return bundle.get();
}

std::string localizedString(std::string_view key) {
    return resourceBundle().localizedString(key);
}

} // namespace CorbelKit
