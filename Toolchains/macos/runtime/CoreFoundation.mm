// The few functions of CoreFoundation that are used here, over GNUstep's Foundation.
#import <Foundation/Foundation.h>

#include <array>
#include <utility>

// Nobody looks into these.
extern "C" {
void* kCFRunLoopDefaultModeObject __asm__("kCFRunLoopDefaultMode") = nullptr;
void* kCFRunLoopCommonModesObject __asm__("kCFRunLoopCommonModes") = nullptr;
void* kCFAllocatorDefaultObject __asm__("kCFAllocatorDefault") = nullptr;
}

@interface CorbelRunLoopBlock : NSObject
@end

@implementation CorbelRunLoopBlock

// That of the main thread is always there. GNUstep would make one for each of two threads that ask
// at once, and perform at once what is asked for while there is none.
+ (void)load {
    static_cast<void>(NSRunLoop.mainRunLoop);
}

+ (void)perform:(void (^)(void))block {
    block();
}

@end

CFRunLoopRef CFRunLoopGetMain(void) {
    return (__bridge CFRunLoopRef)NSRunLoop.mainRunLoop;
}

void CFRunLoopPerformBlock(CFRunLoopRef, CFTypeRef, void (^block)(void)) {
    [CorbelRunLoopBlock performSelectorOnMainThread:@selector(perform:)
                                         withObject:[block copy]
                                      waitUntilDone:NO];
}

void CFRunLoopWakeUp(CFRunLoopRef) {} // done with

CFRunLoopRunResult CFRunLoopRunInMode(CFRunLoopMode, CFTimeInterval seconds, unsigned char) {
    @autoreleasepool {
        [NSRunLoop.mainRunLoop runMode:NSDefaultRunLoopMode
                            beforeDate:[NSDate dateWithTimeIntervalSinceNow:seconds]];
    }
    return kCFRunLoopRunFinished;
}

CFDictionaryRef CFBundleCopyInfoDictionaryForURL(CFURLRef url) {
    NSString* const path = ((__bridge NSURL*)url).path;
    NSBundle* const bundle = path == nil ? nil : [NSBundle bundleWithPath:path];
    return (__bridge_retained CFDictionaryRef)bundle.infoDictionary;
}

namespace {

// Names of the registry (IANA Character Sets) and the numbers of CFStringEncodingExt.h for them.
struct Encoding {
    NSString* name;
    CFStringEncoding number;
    unsigned long foundation;
};

const std::array<Encoding, 16>& encodings() {
    static const std::array<Encoding, 16> table{{
        {@"us-ascii", 0x0600, 1},
        {@"iso-8859-1", 0x0201, 5},
        {@"iso-8859-15", 0x020F, 0x8000020F},
        {@"utf-8", 0x08000100, 4},
        {@"utf-16", 0x0100, 10},
        {@"utf-16le", 0x14000100, 0x94000100},
        {@"utf-32", 0x0C000100, 0x8C000100},
        {@"iso-2022-jp", 0x0820, 21},
        {@"shift_jis", 0x0A01, 0x80000A01},
        {@"windows-31j", 0x0420, 8},
        {@"macintosh", 0x0000, 30},
        {@"windows-1252", 0x0500, 12},
        {@"gb2312", 0x0930, 0x80000930},
        {@"gb18030", 0x0632, 0x80000632},
        {@"koi8-r", 0x0A02, 0x80000A02},
        {@"ibm850", 0x0410, 0x80000410},
    }};
    return table;
}

} // namespace

CFStringEncoding CFStringConvertIANACharSetNameToEncoding(CFStringRef name) {
    for (const auto& encoding : encodings()) {
        if ([encoding.name caseInsensitiveCompare:(__bridge NSString*)name] == NSOrderedSame)
            return encoding.number;
    }
    return kCFStringEncodingInvalidId;
}

unsigned long CFStringConvertEncodingToNSStringEncoding(CFStringEncoding number) {
    for (const auto& encoding : encodings()) {
        if (encoding.number == number)
            return encoding.foundation;
    }
    return number |
           0x80000000UL; // as CFStringEncodingExt.h numbers those that Foundation has no name for
}
