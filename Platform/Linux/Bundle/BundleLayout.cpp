#include "Platform/Linux/Bundle/BundleLayout.h"

#include "Platform/Linux/Bundle/BundleFiles.h"

#include <array>

namespace Platform {
namespace {

struct Layout {
    const char* information; // the folder of Info.plist, by which the layout is recognised
    const char* resources;
};

constexpr std::array layouts = {
    Layout{.information = "Contents", .resources = "Contents/Resources"},
    Layout{.information = "Resources", .resources = "Resources"},
    Layout{.information = "Versions/Current/Resources", .resources = "Versions/Current/Resources"},
    Layout{.information = "Support Files", .resources = "Support Files/Resources"},
};

} // namespace

BundleLayout BundleLayout::of(const URL& bundle) {
    constexpr auto name = "Info.plist";
    constexpr auto folder = URL::DirectoryHint::isDirectory;
    for (const auto& layout : layouts) {
        const auto place = bundle.appending(layout.information, folder);
        if (BundleFiles::exist(place)) {
            return {.information = place.appending(name),
                    .resources = bundle.appending(layout.resources, folder)};
        }
    }
    return {.information = bundle.appending(name), .resources = bundle};
}

} // namespace Platform
