#include "Platform/macOS/Text.h"

#include "Platform/PrintableText.h"

namespace Platform {

NSString* foundationText(std::string_view text) {
    if (text.empty())
        return @"";
    return [[NSString alloc] initWithBytes:text.data()
                                    length:text.size()
                                  encoding:NSUTF8StringEncoding];
}

std::string portableText(NSString* text) {
    NSData* const bytes = [text dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
    return bytes.length == 0 ? std::string()
                             : std::string(static_cast<const char*>(bytes.bytes), bytes.length);
}

std::string lineOf(NSError* error) {
    return printableText(portableText(error.localizedDescription), ActingCharacters::spaced);
}

} // namespace Platform
