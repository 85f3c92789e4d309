// Declarations of what this system uses of the framework, and of nothing else. Compared with the
// public metadata by the declaration checker; a build on a Mac uses the system's own headers.
#pragma once

#ifdef __cplusplus
#define CF_EXPORT extern "C"
#define CF_OPTIONS(type, name)                                                                     \
    type name;                                                                                     \
    enum : type
#else
#define CF_EXPORT extern
#define CF_OPTIONS(type, name)                                                                     \
    enum name : type name;                                                                         \
    enum name : type
#endif
#define CF_ENUM(type, name)                                                                        \
    enum name : type name;                                                                         \
    enum name : type
typedef double CFTimeInterval;
typedef long CFIndex;
typedef const void* CFTypeRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFArray* CFArrayRef;
typedef double CGFloat;
typedef const struct __CFString* CFStringRef;
typedef const struct __CFDictionary* CFDictionaryRef;
typedef const struct __CFURL* CFURLRef;
typedef unsigned int CFStringEncoding;
typedef struct __CFRunLoop* CFRunLoopRef;
typedef CFStringRef CFRunLoopMode;
typedef CF_ENUM(int, CFRunLoopRunResult) { kCFRunLoopRunFinished = 1 };
typedef const void* (*CFAllocatorRetainCallBack)(const void* info);
typedef void (*CFAllocatorReleaseCallBack)(const void* info);
typedef CFStringRef (*CFAllocatorCopyDescriptionCallBack)(const void* info);
CF_EXPORT const CFAllocatorRef kCFAllocatorDefault;
CF_EXPORT const CFRunLoopMode kCFRunLoopDefaultMode;
CF_EXPORT const CFRunLoopMode kCFRunLoopCommonModes;
CF_EXPORT CFRunLoopRef CFRunLoopGetMain(void);
CF_EXPORT void CFRunLoopPerformBlock(CFRunLoopRef rl, CFTypeRef mode, void (^block)(void));
CF_EXPORT void CFRunLoopWakeUp(CFRunLoopRef rl);
CF_EXPORT CFRunLoopRunResult CFRunLoopRunInMode(CFRunLoopMode mode, CFTimeInterval seconds,
                                                unsigned char returnAfterSourceHandled);
CF_EXPORT CFDictionaryRef CFBundleCopyInfoDictionaryForURL(CFURLRef url)
    __attribute__((cf_returns_retained));
#define kCFStringEncodingInvalidId (0xffffffffU)
CF_EXPORT CFStringEncoding CFStringConvertIANACharSetNameToEncoding(CFStringRef theString);
CF_EXPORT unsigned long CFStringConvertEncodingToNSStringEncoding(CFStringEncoding encoding);
