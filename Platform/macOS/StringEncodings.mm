#include "Platform/TextServices.h"
#include "Platform/macOS/Text.h"

#import <CoreFoundation/CoreFoundation.h>

namespace Platform::TextServices {

std::vector<EncodingNumber> availableStringEncodings() {
    std::vector<EncodingNumber> encodings;
    for (const auto* encoding = NSString.availableStringEncodings; *encoding != 0; ++encoding)
        encodings.push_back(static_cast<EncodingNumber>(*encoding));
    return encodings;
}

std::string localizedName(EncodingNumber encoding) {
    @autoreleasepool {
        const auto number = static_cast<NSStringEncoding>(encoding);
        return portableText([NSString localizedNameOfStringEncoding:number]);
    }
}

std::optional<EncodingNumber> encodingForIANACharSetName(std::string_view name) {
    // Core Foundation may look no further than to a NUL.
    if (name.empty() || name.find('\0') != std::string_view::npos)
        return std::nullopt;
    @autoreleasepool {
        NSString* const text = foundationText(name);
        if (text == nil)
            return std::nullopt;
        const auto encoding = CFStringConvertIANACharSetNameToEncoding((__bridge CFStringRef)text);
        if (encoding == kCFStringEncodingInvalidId)
            return std::nullopt;
        return static_cast<EncodingNumber>(CFStringConvertEncodingToNSStringEncoding(encoding));
    }
}

} // namespace Platform::TextServices
