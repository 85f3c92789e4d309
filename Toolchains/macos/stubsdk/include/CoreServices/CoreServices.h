// Declarations of what this system uses of the framework, and of nothing else. Compared with the
// public metadata by the declaration checker; a build on a Mac uses the system's own headers.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <dispatch/dispatch.h>
#include <stdint.h>

typedef uint32_t FSEventStreamCreateFlags;

enum {
    kFSEventStreamCreateFlagUseCFTypes = 0x00000001,
    kFSEventStreamCreateFlagFileEvents = 0x00000010
};

typedef uint32_t FSEventStreamEventFlags;
typedef uint64_t FSEventStreamEventId;

enum { kFSEventStreamEventIdSinceNow = 0xFFFFFFFFFFFFFFFFULL };
typedef struct __FSEventStream* FSEventStreamRef;
typedef const struct __FSEventStream* ConstFSEventStreamRef;

typedef struct FSEventStreamContext {
    CFIndex version;
    void* info;
    CFAllocatorRetainCallBack retain;
    CFAllocatorReleaseCallBack release;
    CFAllocatorCopyDescriptionCallBack copyDescription;
} FSEventStreamContext;

typedef void (*FSEventStreamCallback)(ConstFSEventStreamRef streamRef, void* clientCallBackInfo,
                                      size_t numEvents, void* eventPaths,
                                      const FSEventStreamEventFlags* eventFlags,
                                      const FSEventStreamEventId* eventIds);
CF_EXPORT FSEventStreamRef FSEventStreamCreate(
    CFAllocatorRef allocator, FSEventStreamCallback callback, FSEventStreamContext* context,
    CFArrayRef pathsToWatch, FSEventStreamEventId sinceWhen, CFTimeInterval latency,
    FSEventStreamCreateFlags flags);
CF_EXPORT void FSEventStreamSetDispatchQueue(FSEventStreamRef streamRef, dispatch_queue_t q);
CF_EXPORT unsigned char FSEventStreamStart(FSEventStreamRef streamRef);
CF_EXPORT void FSEventStreamStop(FSEventStreamRef streamRef);
CF_EXPORT void FSEventStreamInvalidate(FSEventStreamRef streamRef);
CF_EXPORT void FSEventStreamRelease(FSEventStreamRef streamRef);
