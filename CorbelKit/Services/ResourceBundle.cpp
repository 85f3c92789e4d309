#include "CorbelKit/Services/ResourceBundle.h"

#include "Platform/FileManager.h"
#include "Platform/NeverDestroyed.h"

#include <iostream>
#include <vector>

namespace CorbelKit {
namespace {

using Platform::Bundle;
using Platform::URL;

/// In the program's own bundle; beside a program that has none.
std::vector<URL> ownPlaces() {
    constexpr auto folder = URL::DirectoryHint::isDirectory;
    const auto& main = Bundle::main().bundleURL();
    return {main.appending("Contents/Frameworks/CorbelKit.framework", folder),
            main.appending("CorbelKit.framework", folder)};
}

/// What the library brings along, or where it was meant to be installed with it.
URL commonPlace() {
    const auto url = URL::parse(CORBEL_KIT_BUNDLE);
    return url ? *url : URL::file(CORBEL_KIT_BUNDLE, URL::DirectoryHint::isDirectory);
}

std::string placeOf(const URL& url) {
    return url.isFileURL() ? url.path() : url.absoluteString();
}

// In one piece: others write there as well.
void report(const std::string& what, const std::string& where) {
    std::cerr << "CorbelKit: no " + what + " in " + where + '\n';
    std::cerr.clear();
}

Bundle findBundle() {
    std::string sought;
    for (const auto& place : ownPlaces()) {
        if (!Platform::FileManager::fileExists(place)) {
            sought += placeOf(place) + ", ";
            continue;
        }
        Bundle bundle(place);
        if (!bundle.isLocalized())
            report("texts", placeOf(place));
        return bundle;
    }
    Bundle bundle(commonPlace());
    if (!bundle.isLocalized())
        report("texts", sought + placeOf(bundle.bundleURL()));
    return bundle;
}

} // namespace

const Bundle& resourceBundle() {
    static const Platform::NeverDestroyed<Bundle> bundle(findBundle());
    return bundle.get();
}

std::optional<URL> requiredResource(const Bundle& bundle, const std::string& name) {
    auto url = bundle.urlForResource(name);
    if (!url)
        report(name, placeOf(bundle.bundleURL()));
    return url;
}

std::string localizedString(std::string_view key) {
    return resourceBundle().localizedString(key);
}

} // namespace CorbelKit
