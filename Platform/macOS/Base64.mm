#include "Platform/Base64.h"

#include "Platform/macOS/Text.h"

namespace Platform {

std::string base64EncodedString(std::string_view bytes) {
    @autoreleasepool {
        NSData* const data = [NSData dataWithBytes:bytes.data() length:bytes.size()];
        return portableText([data base64EncodedStringWithOptions:NSDataBase64EncodingOptions()]);
    }
}

} // namespace Platform
