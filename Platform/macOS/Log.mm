#include "Platform/Log.h"

#include "Platform/PrintableText.h"
#include "Platform/macOS/Text.h"

namespace Platform {

void log(std::string_view message) {
    @autoreleasepool {
        NSString* const text = foundationText(message);
        NSLog(@"%@", text != nil
                         ? text // no bytes are lost that somebody else chose
                         : foundationText(printableText(message, ActingCharacters::escaped)));
    }
}

} // namespace Platform
