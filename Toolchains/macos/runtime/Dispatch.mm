// The objects of include/dispatch/dispatch.h, each over one of this machine's libdispatch, which
// has neither ARC nor sources of files and processes.
#import <Foundation/NSObject.h>
#include <dispatch/native.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstring>

@interface CorbelDispatchQueue : NSObject
@property(readonly) dispatch_queue_t native;
@end

@implementation CorbelDispatchQueue

- (instancetype)initWithNative:(dispatch_queue_t)native {
    if ((self = [super init]))
        _native = native;
    return self;
}

- (void)dealloc {
    dispatch_release(_native);
}

@end

@interface CorbelDispatchSource : NSObject
@property(readonly) dispatch_source_t native;
@property(readonly) int descriptor; // -1: none of our own
@property(readonly) BOOL isOfFile;
@end

namespace {

// kevent(2): "NOTE_WRITE: A write occurred on the file referenced by the descriptor", which for a
// folder is that an entry is added or removed.
constexpr uint32_t writes = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;

bool takeWrites(int descriptor) {
    alignas(inotify_event) std::array<char, 4096> buffer;
    bool isWritten = false;
    for (ssize_t count = 0; (count = read(descriptor, buffer.data(), buffer.size())) > 0;) {
        for (ssize_t offset = 0; offset < count;) {
            inotify_event event;
            std::memcpy(&event, &buffer[static_cast<size_t>(offset)], sizeof event);
            isWritten = isWritten || (event.mask & (writes | IN_Q_OVERFLOW)) != 0;
            offset += static_cast<ssize_t>(sizeof event + event.len);
        }
    }
    return isWritten;
}

// dispatch_source_create(3): the system knows of the source once it is registered, which is after
// it was activated, on a thread of its own; what comes before is not reported.
void watch(int descriptor, int file) {
    std::array<char, 64> path;
    std::snprintf(path.data(), path.size(), "/proc/self/fd/%d", file);
    inotify_add_watch(descriptor, path.data(), writes);
}

} // namespace

@implementation CorbelDispatchSource {
    int file_;
}

- (instancetype)initForFile:(int)file queue:(CorbelDispatchQueue*)queue {
    if ((self = [super init])) {
        _isOfFile = YES;
        file_ = file;
        _descriptor = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
        [self makeReaderOn:queue];
    }
    return self;
}

- (instancetype)initForProcess:(pid_t)process queue:(CorbelDispatchQueue*)queue {
    if ((self = [super init])) {
        _descriptor = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
        [self makeReaderOn:queue];
    }
    return self;
}

- (instancetype)initForSignal:(uintptr_t)signal queue:(CorbelDispatchQueue*)queue {
    if ((self = [super init])) {
        _descriptor = -1;
        _native = dispatch_source_create(DISPATCH_SOURCE_TYPE_SIGNAL, signal, 0, queue.native);
    }
    return self;
}

- (void)makeReaderOn:(CorbelDispatchQueue*)queue {
    _native = dispatch_source_create(DISPATCH_SOURCE_TYPE_READ, static_cast<uintptr_t>(_descriptor),
                                     0, queue.native);
    [self setRegistrationHandler:nil];
    [self setCancelHandler:nil];
}

- (void)setEventHandler:(dispatch_block_t)handler {
    const int descriptor = _descriptor;
    if (_isOfFile) {
        dispatch_source_set_event_handler(_native, ^{
            if (takeWrites(descriptor))
                handler();
        });
    } else {
        dispatch_source_set_event_handler(_native, handler);
    }
}

- (void)setRegistrationHandler:(dispatch_block_t)handler {
    const int descriptor = _descriptor, file = file_;
    const BOOL isOfFile = _isOfFile;
    dispatch_source_set_registration_handler(_native, ^{
        if (isOfFile)
            watch(descriptor, file);
        if (handler)
            handler();
    });
}

- (void)setCancelHandler:(dispatch_block_t)handler {
    const int descriptor = _descriptor;
    dispatch_source_set_cancel_handler(_native, ^{
        if (descriptor != -1)
            close(descriptor);
        if (handler)
            handler();
    });
}

- (void)dealloc {
    dispatch_release(_native);
}

@end

extern "C" {

struct CorbelQueueKind {
    char unused;
};

struct CorbelSourceKind {
    char unused;
};

extern const CorbelQueueKind corbelConcurrentQueue{};
extern const CorbelSourceKind corbelVnodeSource{}, corbelProcessSource{}, corbelSignalSource{};

__attribute__((ns_returns_retained)) CorbelDispatchQueue*
corbel_dispatch_queue_create(const char* label, const CorbelQueueKind* kind) {
    return [[CorbelDispatchQueue alloc]
        initWithNative:dispatch_queue_create(label, kind == nullptr ? DISPATCH_QUEUE_SERIAL
                                                                    : DISPATCH_QUEUE_CONCURRENT)];
}

CorbelDispatchQueue* corbel_dispatch_get_main_queue() {
    static CorbelDispatchQueue* const queue =
        [[CorbelDispatchQueue alloc] initWithNative:dispatch_get_main_queue()];
    return queue;
}

CorbelDispatchQueue* corbel_dispatch_get_global_queue(intptr_t quality, uintptr_t flags) {
    static CorbelDispatchQueue* const queue =
        [[CorbelDispatchQueue alloc] initWithNative:dispatch_get_global_queue(quality, flags)];
    return queue;
}

const char* corbel_dispatch_queue_get_label(CorbelDispatchQueue* queue) {
    return dispatch_queue_get_label(queue.native);
}

void corbel_dispatch_async(CorbelDispatchQueue* queue, dispatch_block_t block) {
    dispatch_async(queue.native, block);
}

void corbel_dispatch_sync(CorbelDispatchQueue* queue, dispatch_block_t block) {
    dispatch_sync(queue.native, block);
}

void corbel_dispatch_barrier_async(CorbelDispatchQueue* queue, dispatch_block_t block) {
    dispatch_barrier_async(queue.native, block);
}

void corbel_dispatch_async_f(CorbelDispatchQueue* queue, void* context, dispatch_function_t work) {
    dispatch_async_f(queue.native, context, work);
}

void corbel_dispatch_after_f(dispatch_time_t when, CorbelDispatchQueue* queue, void* context,
                             dispatch_function_t work) {
    dispatch_after_f(when, queue.native, context, work);
}

__attribute__((ns_returns_retained)) CorbelDispatchSource*
corbel_dispatch_source_create(const CorbelSourceKind* kind, uintptr_t handle, unsigned long,
                              CorbelDispatchQueue* queue) {
    if (kind == &corbelVnodeSource)
        return [[CorbelDispatchSource alloc] initForFile:static_cast<int>(handle) queue:queue];
    if (kind == &corbelProcessSource)
        return [[CorbelDispatchSource alloc] initForProcess:static_cast<pid_t>(handle) queue:queue];
    return [[CorbelDispatchSource alloc] initForSignal:handle queue:queue];
}

void corbel_dispatch_source_set_event_handler(CorbelDispatchSource* source,
                                              dispatch_block_t handler) {
    [source setEventHandler:handler];
}

void corbel_dispatch_source_set_registration_handler(CorbelDispatchSource* source,
                                                     dispatch_block_t handler) {
    [source setRegistrationHandler:handler];
}

void corbel_dispatch_source_set_cancel_handler(CorbelDispatchSource* source,
                                               dispatch_block_t handler) {
    [source setCancelHandler:handler];
}

void corbel_dispatch_source_cancel(CorbelDispatchSource* source) {
    dispatch_source_cancel(source.native);
}

intptr_t corbel_dispatch_source_testcancel(CorbelDispatchSource* source) {
    return dispatch_source_testcancel(source.native);
}

void corbel_dispatch_activate(CorbelDispatchSource* source) {
    dispatch_activate(source.native);
}

} // extern "C"
