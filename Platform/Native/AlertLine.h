#pragma once

#include "Platform/AlertPresenter.h"
#include "Platform/Mutex.h"

#include <list>
#include <vector>

namespace Platform {

/// The alerts of this process that are up or wait, each once, in the order in which they were asked
/// for.
class AlertLine {
public:
    using Task = std::function<void()>;

    /// The one of this process. Never destroyed.
    static AlertLine& shared();

    /// Callable on any thread.
    void setPresenter(AlertPresenter presenter) CORBEL_EXCLUDES(mutex_);

    /// Shows it in its turn. `dismissed` runs on the main thread, or at once where it is only
    /// written. Callable on any thread.
    void add(const Alert& alert, Task dismissed) CORBEL_EXCLUDES(mutex_);

    /// Shows it now, and returns when it is dismissed. Main thread.
    void run(const Alert& alert) CORBEL_EXCLUDES(mutex_);

    /// Main thread.
    void whenEmpty(Task task) CORBEL_EXCLUDES(mutex_);

    /// Nothing is shown any more. Main thread.
    void end() CORBEL_EXCLUDES(mutex_);

private:
    struct Entry {
        Alert alert;
        std::vector<Task> dismissed = {};
        bool isUp = false;
    };

    using Entries = std::list<Entry>;

    bool isWritten() const CORBEL_REQUIRES(mutex_);
    Entry& entryOf(const Alert& alert) CORBEL_REQUIRES(mutex_);
    void showNext() CORBEL_EXCLUDES(mutex_);
    void show(const Alert& alert) CORBEL_EXCLUDES(mutex_);

    Mutex mutex_;
    AlertPresenter presenter_ CORBEL_GUARDED_BY(mutex_);
    Entries entries_ CORBEL_GUARDED_BY(mutex_);
    std::vector<Task> whenEmpty_ CORBEL_GUARDED_BY(mutex_);
    bool hasEnded_ CORBEL_GUARDED_BY(mutex_) = false;
};

} // namespace Platform
