#include "Platform/Bundle.h"

#include "Platform/NeverDestroyed.h"
#include "Platform/macOS/FoundationURL.h"
#include "Platform/macOS/PropertyListObjects.h"
#include "Platform/macOS/Text.h"

#include <utility>

namespace Platform {
namespace {

// Entry by entry: among them the system puts some of its own that no property list can hold, such
// as the URL of Info.plist.
PropertyList::Dictionary portableDictionary(NSDictionary<NSString*, id>* information) {
    PropertyList::Dictionary dictionary;
    for (NSString* key in information) {
        if (auto value = portableValue(information[key]))
            dictionary.emplace(portableText(key), std::move(*value));
    }
    return dictionary;
}

} // namespace

class Bundle::Impl {
public:
    /// nil for a folder that is no bundle.
    Impl(const URL& bundleURL, NSBundle* bundle)
        : bundleURL(bundleURL)
        , infoDictionary(portableDictionary(bundle.infoDictionary))
        , bundle(bundle) {}

    const URL bundleURL;
    const PropertyList::Dictionary infoDictionary;
    NSBundle* const bundle;
};

const Bundle& Bundle::main() {
    static const NeverDestroyed<Bundle> bundle(
        portableURL(NSBundle.mainBundle.bundleURL).value_or(URL::file("/")));
    return bundle.get();
}

std::optional<PropertyList::Dictionary> Bundle::informationDictionary(const URL& bundleURL) {
    @autoreleasepool {
        NSURL* const url = foundationURL(bundleURL);
        if (!url.isFileURL)
            return std::nullopt;
        NSDictionary<NSString*, id>* const information =
            (__bridge_transfer NSDictionary*)CFBundleCopyInfoDictionaryForURL(
                (__bridge CFURLRef)url);
        auto dictionary = portableDictionary(information);
        return dictionary.empty() ? std::nullopt : std::optional(std::move(dictionary));
    }
}

Bundle::Bundle(const URL& bundleURL) {
    @autoreleasepool {
        NSURL* const url = foundationURL(bundleURL);
        impl_ = std::make_shared<Impl>(bundleURL, url == nil ? nil : [NSBundle bundleWithURL:url]);
    }
}

const URL& Bundle::bundleURL() const {
    return impl_->bundleURL;
}

const PropertyList::Dictionary& Bundle::infoDictionary() const {
    return impl_->infoDictionary;
}

std::optional<URL> Bundle::urlForResource(std::string_view name) const {
    @autoreleasepool {
        NSString* const text = foundationText(name);
        return text == nil ? std::nullopt
                           : portableURL([impl_->bundle URLForResource:text withExtension:nil]);
    }
}

bool Bundle::isLocalized() const {
    @autoreleasepool {
        return impl_->bundle.localizations.count > 0;
    }
}

std::string Bundle::localizedString(std::string_view key, std::string_view table) const {
    @autoreleasepool {
        NSString* const text = foundationText(key);
        if (impl_->bundle == nil || text == nil)
            return std::string(key);
        return portableText([impl_->bundle localizedStringForKey:text
                                                           value:text
                                                           table:foundationText(table)]);
    }
}

} // namespace Platform
