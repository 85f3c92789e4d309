// The objects of include/dispatch/dispatch.h, each over one of this machine's libdispatch, which
// has neither ARC nor sources of files and processes.
#import <Foundation/NSObject.h>
#include <dispatch/native.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
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

// One bit a signal that the system records for a source.
std::atomic<uint64_t> recordedSignals;

} // namespace

@implementation CorbelDispatchSource {
    int file_;
    uint64_t signal_;
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
        signal_ = uint64_t{1} << signal;
        _native = dispatch_source_create(DISPATCH_SOURCE_TYPE_SIGNAL, signal, 0, queue.native);
        [self setRegistrationHandler:nil];
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
    const uint64_t signal = signal_;
    dispatch_source_set_registration_handler(_native, ^{
        if (isOfFile)
            watch(descriptor, file);
        recordedSignals |= signal;
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

// CORBEL_LATE_SIGNALS: the system takes that many milliseconds to know of a source of signals.
- (void)activate {
    const char* const delay = std::getenv("CORBEL_LATE_SIGNALS");
    if (signal_ == 0 || delay == nullptr)
        return dispatch_activate(_native);
    dispatch_after(
        dispatch_time(DISPATCH_TIME_NOW, std::atoi(delay) * static_cast<int64_t>(NSEC_PER_MSEC)),
        dispatch_get_global_queue(0, 0), ^{
            dispatch_activate(self.native);
        });
}

- (void)dealloc {
    dispatch_release(_native);
}

@end

extern "C" {

void (*__real_signal(int signal, void (*handler)(int)))(int);

// kevent(2), EVFILT_SIGNAL: "records all attempts to deliver a signal to a process, even if the
// signal has been marked as SIG_IGN". Here a handler of libdispatch records them, and has to stay.
// The linker leads calls of signal here.
void (*__wrap_signal(int signal, void (*handler)(int)))(int) {
    if (handler == SIG_IGN && (recordedSignals & uint64_t{1} << signal) != 0)
        return SIG_DFL;
    return __real_signal(signal, handler);
}

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
    [source activate];
}

} // extern "C"
