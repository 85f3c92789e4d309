#include "Platform/TextServices.h"

#include "Platform/macOS/Text.h"

namespace Platform::TextServices {
namespace {

/// What is not UTF-8 stays as it is.
std::string changed(std::string_view text, NSString* (^change)(NSString* text)) {
    @autoreleasepool {
        NSString* const original = foundationText(text);
        return original == nil ? std::string(text) : portableText(change(original));
    }
}

} // namespace

std::vector<std::string> preferredLanguages() {
    @autoreleasepool {
        std::vector<std::string> languages;
        for (NSString* language in NSLocale.preferredLanguages)
            languages.push_back(portableText(language));
        return languages;
    }
}

std::string capitalized(std::string_view text) {
    return changed(text, ^(NSString* original) {
        return [original capitalizedStringWithLocale:NSLocale.currentLocale];
    });
}

std::string lowercased(std::string_view text) {
    return changed(text, ^(NSString* original) {
        return original.lowercaseString;
    });
}

} // namespace Platform::TextServices
