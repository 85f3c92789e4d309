#include "Platform/Native/URLSyntax.h"

#include "Platform/macOS/Text.h"

namespace Platform {
namespace {

NSURLComponents* componentsOf(NSString* text) {
    // From then on the parser mends what is no URL, unless it is asked not to.
    if (@available(macOS 14.0, *))
        return [NSURLComponents componentsWithString:text encodingInvalidCharacters:NO];
    return [NSURLComponents componentsWithString:text];
}

} // namespace

bool isAbsoluteURL(const std::string& text) {
    @autoreleasepool {
        return componentsOf(foundationText(text)).scheme.length > 0;
    }
}

} // namespace Platform
