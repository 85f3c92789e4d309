#include "Platform/TextServices.h"
#include "Platform/macOS/Text.h"

namespace Platform::TextServices {
namespace {

/// What is not UTF-8 takes some place in the order, always the same.
NSString* comparableText(std::string_view text) {
    NSString* const utf8 = foundationText(text);
    return utf8 != nil ? utf8
                       : [[NSString alloc] initWithBytes:text.data()
                                                  length:text.size()
                                                encoding:NSISOLatin1StringEncoding];
}

} // namespace

std::weak_ordering localizedStandardCompare(std::string_view first, std::string_view second) {
    @autoreleasepool {
        const NSComparisonResult result =
            [comparableText(first) localizedStandardCompare:comparableText(second)];
        return static_cast<NSInteger>(result) <=> 0;
    }
}

} // namespace Platform::TextServices
