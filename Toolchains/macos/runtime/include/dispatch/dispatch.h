// The queues and sources of libdispatch as the system has them: objects that ARC retains and releases
// (<os/object.h>: "By default, libSystem objects such as GCD and XPC objects are declared as Objective-C types
// when building with an Objective-C compiler"). Dispatch.mm makes them of this machine's libdispatch.
#pragma once
#include <stddef.h>
#include <stdint.h>
#include <time.h>

@class CorbelDispatchQueue, CorbelDispatchSource;
typedef CorbelDispatchQueue* dispatch_queue_t;
typedef CorbelDispatchSource* dispatch_source_t;
typedef const struct CorbelQueueKind* dispatch_queue_attr_t;
typedef const struct CorbelSourceKind* dispatch_source_type_t;
typedef uint64_t dispatch_time_t;
typedef void (*dispatch_function_t)(void*);
typedef void (^dispatch_block_t)(void);

#define DISPATCH_TIME_NOW (0ULL)
#define DISPATCH_TIME_FOREVER (~0ULL)
#define NSEC_PER_MSEC 1000000ULL
enum { QOS_CLASS_DEFAULT = 0x15 };
enum : unsigned long { DISPATCH_VNODE_WRITE = 2, DISPATCH_PROC_EXIT = 0x80000000 };

extern "C" {
extern const struct CorbelQueueKind corbelConcurrentQueue;
extern const struct CorbelSourceKind corbelVnodeSource, corbelProcessSource, corbelSignalSource;
#define DISPATCH_QUEUE_SERIAL ((dispatch_queue_attr_t) nullptr)
#define DISPATCH_QUEUE_CONCURRENT (&corbelConcurrentQueue)
#define DISPATCH_SOURCE_TYPE_VNODE (&corbelVnodeSource)
#define DISPATCH_SOURCE_TYPE_PROC (&corbelProcessSource)
#define DISPATCH_SOURCE_TYPE_SIGNAL (&corbelSignalSource)

// Of the same names as libdispatch's in the source alone: Foundation goes on using those.
#define STAND_IN(name) __asm__("corbel_" #name)
dispatch_queue_t dispatch_queue_create(const char* label, dispatch_queue_attr_t kind)
    STAND_IN(dispatch_queue_create) __attribute__((ns_returns_retained));
dispatch_queue_t dispatch_get_main_queue(void) STAND_IN(dispatch_get_main_queue);
dispatch_queue_t dispatch_get_global_queue(intptr_t quality, uintptr_t flags)
    STAND_IN(dispatch_get_global_queue);
const char* dispatch_queue_get_label(dispatch_queue_t queue) STAND_IN(dispatch_queue_get_label);
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) STAND_IN(dispatch_async);
void dispatch_sync(dispatch_queue_t queue, dispatch_block_t block) STAND_IN(dispatch_sync);
void dispatch_barrier_async(dispatch_queue_t queue, dispatch_block_t block)
    STAND_IN(dispatch_barrier_async);
void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work)
    STAND_IN(dispatch_async_f);
void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void* context,
                      dispatch_function_t work) STAND_IN(dispatch_after_f);
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t nanoseconds);

dispatch_source_t dispatch_source_create(dispatch_source_type_t type, uintptr_t handle,
                                         unsigned long mask, dispatch_queue_t queue)
    STAND_IN(dispatch_source_create) __attribute__((ns_returns_retained));
void dispatch_source_set_event_handler(dispatch_source_t source, dispatch_block_t handler)
    STAND_IN(dispatch_source_set_event_handler);
void dispatch_source_set_registration_handler(dispatch_source_t source, dispatch_block_t handler)
    STAND_IN(dispatch_source_set_registration_handler);
void dispatch_source_set_cancel_handler(dispatch_source_t source, dispatch_block_t handler)
    STAND_IN(dispatch_source_set_cancel_handler);
void dispatch_source_cancel(dispatch_source_t source) STAND_IN(dispatch_source_cancel);
intptr_t dispatch_source_testcancel(dispatch_source_t source) STAND_IN(dispatch_source_testcancel);
void dispatch_activate(dispatch_source_t source) STAND_IN(dispatch_activate);
#undef STAND_IN
}
