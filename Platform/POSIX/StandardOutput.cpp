#include "Platform/StandardOutput.h"

#include "Platform/DispatchQueue.h"
#include "Platform/Mutex.h"
#include "Platform/NeverDestroyed.h"

#include <poll.h>
#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <cstddef>
#include <deque>
#include <string_view>
#include <utility>

namespace Platform::StandardOutput {
namespace {

// A reader that has gone, or a file as large as it may be, is a lost line, also where the program
// has not said so to the system.
void blockSignalsOfFailedWrites() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    sigaddset(&signals, SIGXFSZ);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

void writeAll(std::string_view text) {
    while (!text.empty()) {
        const auto count = ::write(STDOUT_FILENO, text.data(), text.size());
        if (count >= 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) { // whoever shares the terminal has made it so
            pollfd output{.fd = STDOUT_FILENO, .events = POLLOUT, .revents = 0};
            ::poll(&output, 1, -1);
        } else if (errno != EINTR) {
            return;
        }
    }
}

class Writer {
public:
    static Writer& shared() {
        static const NeverDestroyed<Writer> writer;
        return writer.get();
    }

    void add(std::string line) {
        const MutexLock lock(mutex_);
        if (waitingBytes_ + line.size() > mostWaitingBytes) {
            ++dropped_;
            return;
        }
        line += '\n';
        waitingBytes_ += line.size();
        lines_.push_back(std::move(line));
        if (!std::exchange(isWriting_, true))
            queue_.async([this] { writeLines(); });
    }

    bool drain(std::chrono::milliseconds patience) {
        const auto deadline = std::chrono::steady_clock::now() + patience;
        const MutexLock lock(mutex_);
        while (isWriting_) {
            if (drained_.wait_until(mutex_, deadline) == std::cv_status::timeout)
                return !isWriting_;
        }
        return true;
    }

private:
    static constexpr std::size_t mostWaitingBytes = std::size_t{16} << 20U;

    void writeLines() {
        blockSignalsOfFailedWrites();
        for (auto line = next(); !line.empty(); line = next())
            writeAll(line);
    }

    std::string next() {
        const MutexLock lock(mutex_);
        if (!lines_.empty()) {
            auto line = std::move(lines_.front());
            lines_.pop_front();
            waitingBytes_ -= line.size();
            return line;
        }
        if (const auto dropped = std::exchange(dropped_, 0); dropped > 0)
            return std::to_string(dropped) + " lines could not be written here.\n";
        isWriting_ = false;
        drained_.notify_all();
        return {};
    }

    const DispatchQueue queue_ = DispatchQueue::blocking("com.tarnwell.StandardOutput");
    Mutex mutex_;
    std::condition_variable_any drained_;
    std::deque<std::string> lines_ CORBEL_GUARDED_BY(mutex_);
    std::size_t waitingBytes_ CORBEL_GUARDED_BY(mutex_) = 0;
    std::size_t dropped_ CORBEL_GUARDED_BY(mutex_) = 0;
    bool isWriting_ CORBEL_GUARDED_BY(mutex_) = false;
};

} // namespace

void writeLine(std::string line) {
    Writer::shared().add(std::move(line));
}

bool drain(std::chrono::milliseconds patience) {
    return Writer::shared().drain(patience);
}

} // namespace Platform::StandardOutput
