#pragma once

#include <mutex>

// Clang's thread-safety analysis turns "guarded by" from a claim into an error; other compilers
// read past it (https://clang.llvm.org/docs/ThreadSafetyAnalysis.html).
#if defined(__clang__)
#define CORBEL_THREAD_ATTRIBUTE(x) __attribute__((x))
#else
#define CORBEL_THREAD_ATTRIBUTE(x)
#endif

/// The field is touched only while the mutex is held.
#define CORBEL_GUARDED_BY(x) CORBEL_THREAD_ATTRIBUTE(guarded_by(x))
/// The function is called only while the mutex is held, and leaves it so.
#define CORBEL_REQUIRES(...) CORBEL_THREAD_ATTRIBUTE(requires_capability(__VA_ARGS__))
/// The function takes the mutex itself, or calls what may: never called while it is held.
#define CORBEL_EXCLUDES(...) CORBEL_THREAD_ATTRIBUTE(locks_excluded(__VA_ARGS__))

namespace Platform {

/// A mutex that the analysis knows. For state that two threads share where no queue serves.
class CORBEL_THREAD_ATTRIBUTE(capability("mutex")) Mutex {
public:
    /// @{
    /// For `MutexLock`.
    void lock() CORBEL_THREAD_ATTRIBUTE(acquire_capability()) { mutex_.lock(); }

    void unlock() CORBEL_THREAD_ATTRIBUTE(release_capability()) { mutex_.unlock(); }

    /// @}

private:
    std::mutex mutex_;
};

/// Holds a mutex, which outlives it, from its making to its end. On one thread.
class CORBEL_THREAD_ATTRIBUTE(scoped_lockable) MutexLock {
public:
    /// Waits for the mutex.
    explicit MutexLock(Mutex& mutex) CORBEL_THREAD_ATTRIBUTE(acquire_capability(mutex))
        : mutex_(mutex) {
        mutex_.lock();
    }

    ~MutexLock() CORBEL_THREAD_ATTRIBUTE(release_capability()) { mutex_.unlock(); }

    MutexLock(const MutexLock&) = delete;
    MutexLock& operator=(const MutexLock&) = delete;
    MutexLock(MutexLock&&) = delete;
    MutexLock& operator=(MutexLock&&) = delete;

private:
    Mutex& mutex_;
};

} // namespace Platform
