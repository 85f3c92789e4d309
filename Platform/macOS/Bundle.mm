#include "Platform/Bundle.h"

#include "Platform/NeverDestroyed.h"
#include "Platform/macOS/FoundationURL.h"
#include "Platform/macOS/PropertyListObjects.h"
#include "Platform/macOS/Text.h"

#include <utility>

namespace Platform {
namespace {

PropertyList::Dictionary informationOf(NSBundle* bundle) {
    auto information = portableValue(bundle.infoDictionary);
    auto* const entries =
        information ? std::get_if<PropertyList::Dictionary>(&information->value()) : nullptr;
    return entries != nullptr ? std::move(*entries) : PropertyList::Dictionary();
}

} // namespace

class Bundle::Impl {
public:
    /// nil for a folder that is no bundle.
    Impl(const URL& bundleURL, NSBundle* bundle)
        : bundleURL(bundleURL)
        , infoDictionary(informationOf(bundle))
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
