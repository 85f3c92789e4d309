#pragma once

#include "Platform/URL.h"

#import <Foundation/Foundation.h>

#include <string_view>

namespace CorbelKit {

/// nil when the bytes are not UTF-8.
inline NSString* foundationText(std::string_view text) {
    if (text.empty())
        return @"";
    return [[NSString alloc] initWithBytes:text.data()
                                    length:text.size()
                                  encoding:NSUTF8StringEncoding];
}

/// The same text; nil where Foundation takes it for no URL.
inline NSURL* foundationURL(const Platform::URL& url) {
    return [NSURL URLWithString:foundationText(url.absoluteString())];
}

} // namespace CorbelKit
