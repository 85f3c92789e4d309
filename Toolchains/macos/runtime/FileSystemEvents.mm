// FSEvents over inotify: one instance and one thread for all streams, and every folder of a tree
// watched from the time that its first stream is started. Paths alone are reported, as strings of
// Foundation, one for each file: what the flags ask for.
#import <CoreServices/CoreServices.h>
#import <Foundation/Foundation.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>

namespace {

namespace fs = std::filesystem;

/// What of a stream outlives its release: a batch may be on its way.
struct Stream {
    FSEventStreamCallback callback;
    void* info;
    std::string root;
    double latency;
    dispatch_queue_t queue = nil;
    NSMutableArray<NSString*>* pending = [NSMutableArray array];
    bool isInvalid = false;
};

} // namespace

struct __FSEventStream {
    std::shared_ptr<Stream> stream;
};

namespace {

class Watcher {
public:
    static Watcher& shared() {
        static auto* const instance = new Watcher;
        return *instance;
    }

    void start(const std::shared_ptr<Stream>& stream) {
        const std::lock_guard lock(mutex_);
        streams_.insert(stream);
        watch(stream->root, false);
    }

    void stop(const std::shared_ptr<Stream>& stream) {
        const std::lock_guard lock(mutex_);
        streams_.erase(stream);
    }

    NSArray* takePending(Stream& stream) {
        const std::lock_guard lock(mutex_);
        NSArray* const paths = stream.isInvalid ? @[] : [stream.pending copy];
        [stream.pending removeAllObjects];
        return paths;
    }

    void invalidate(Stream& stream) {
        const std::lock_guard lock(mutex_);
        stream.isInvalid = true;
    }

private:
    Watcher() {
        std::thread([this] { follow(); }).detach();
    }

    // The kernel of macOS reports of every folder, however new; here, what was in one before it was
    // watched is reported when it is.
    void watch(const std::string& folder, bool isNew) {
        constexpr auto changes = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO |
                                 IN_CLOSE_WRITE | IN_ATTRIB | IN_ONLYDIR;
        const int number = inotify_add_watch(events_, folder.c_str(), changes);
        if (number < 0)
            return;
        folders_[number] = folder;
        std::error_code gone;
        for (const auto& entry : fs::directory_iterator(folder, gone)) {
            if (isNew)
                report(entry.path());
            if (entry.is_directory(gone) && !entry.is_symlink(gone))
                watch(entry.path(), isNew);
        }
    }

    void follow() {
        alignas(inotify_event) std::array<char, 65536> buffer;
        for (ssize_t count = 0; (count = read(events_, buffer.data(), buffer.size())) > 0;) {
            const std::lock_guard lock(mutex_);
            for (ssize_t offset = 0; offset < count;) {
                const auto* event =
                    reinterpret_cast<const inotify_event*>(&buffer[static_cast<size_t>(offset)]);
                offset += static_cast<ssize_t>(sizeof *event + event->len);
                if (event->len > 0)
                    take(*event);
            }
        }
    }

    void take(const inotify_event& event) {
        const std::string path = folders_[event.wd] + "/" + event.name;
        report(path);
        if ((event.mask & IN_ISDIR) != 0 && (event.mask & (IN_CREATE | IN_MOVED_TO)) != 0)
            watch(path, true);
    }

    // "latency: The number of seconds the service should wait after hearing about an event from the
    // kernel before passing it along to the client via its callback": FSEventStreamCreate
    // reference.
    void report(const std::string& path) {
        @autoreleasepool {
            NSString* const text =
                [NSFileManager.defaultManager stringWithFileSystemRepresentation:path.data()
                                                                          length:path.size()];
            for (const auto& stream : streams_) {
                if (!path.starts_with(stream->root))
                    continue;
                [stream->pending addObject:text];
                if (stream->pending.count == 1)
                    passLater(stream);
            }
        }
    }

    static void passLater(std::shared_ptr<Stream> stream) {
        const auto wait = static_cast<int64_t>(stream->latency * 1e9);
        const auto queue = stream->queue;
        dispatch_after_f(dispatch_time(DISPATCH_TIME_NOW, wait), queue,
                         std::make_unique<std::shared_ptr<Stream>>(std::move(stream)).release(),
                         [](void* context) {
                             const std::unique_ptr<std::shared_ptr<Stream>> held(
                                 static_cast<std::shared_ptr<Stream>*>(context));
                             pass(**held);
                         });
    }

    static void pass(Stream& stream) {
        @autoreleasepool {
            NSArray* const paths = shared().takePending(stream);
            if (paths.count > 0)
                stream.callback(nullptr, stream.info, paths.count, (__bridge void*)paths, nullptr,
                                nullptr);
        }
    }

    const int events_ = inotify_init1(IN_CLOEXEC);
    std::mutex mutex_; // of all that follows, and of the streams
    std::map<int, std::string> folders_;
    std::set<std::shared_ptr<Stream>> streams_;
};

} // namespace

FSEventStreamRef FSEventStreamCreate(CFAllocatorRef, FSEventStreamCallback callback,
                                     FSEventStreamContext* context, CFArrayRef pathsToWatch,
                                     FSEventStreamEventId, CFTimeInterval latency,
                                     FSEventStreamCreateFlags) {
    NSArray* const paths = (__bridge NSArray*)pathsToWatch;
    const fs::path root([paths.firstObject UTF8String]);
    return new __FSEventStream{std::make_shared<Stream>(Stream{.callback = callback,
                                                               .info = context->info,
                                                               .root = root.lexically_normal(),
                                                               .latency = latency})};
}

void FSEventStreamSetDispatchQueue(FSEventStreamRef reference, dispatch_queue_t queue) {
    reference->stream->queue = queue;
}

// "You must call one of the schedule functions before": with no queue there is nothing to call.
unsigned char FSEventStreamStart(FSEventStreamRef reference) {
    if (reference->stream->queue == nil)
        return 0;
    Watcher::shared().start(reference->stream);
    return 1;
}

void FSEventStreamStop(FSEventStreamRef reference) {
    Watcher::shared().stop(reference->stream);
}

void FSEventStreamInvalidate(FSEventStreamRef reference) {
    Watcher::shared().invalidate(*reference->stream);
}

void FSEventStreamRelease(FSEventStreamRef reference) {
    delete reference;
}
