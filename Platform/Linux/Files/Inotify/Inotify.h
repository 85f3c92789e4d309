#pragma once

#include <asio/any_io_executor.hpp>
#include <asio/posix/stream_descriptor.hpp>
#include <sys/inotify.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

namespace Platform {

/// What one record says. The name lies in the buffer that was read into, and is empty where the
/// watched item itself is meant.
struct InotifyRecord {
    int watch; ///< -1 for what concerns all of them
    std::uint32_t events;
    std::string_view name;
};

/// The records of one read, each given once.
class InotifyRecords {
public:
    explicit InotifyRecords(std::span<const char> bytes)
        : bytes_(bytes) {}

    bool isEmpty() const { return bytes_.empty(); }

    /// Absent at the end.
    std::optional<InotifyRecord> next();

private:
    std::span<const char> bytes_;
};

/// An inotify instance (inotify(7)): owns its descriptor, gives watches out and reads their
/// records. All watches end with it. For one thread at a time.
class Inotify {
public:
    /// Absent when the system has no instance left; it allows each user few.
    static std::optional<Inotify> make(const asio::any_io_executor& executor);

    /// Takes over an instance that another released. Where that fails, the object is without one,
    /// gives nothing, and the descriptor stays the caller's.
    Inotify(const asio::any_io_executor& executor, int fileDescriptor);

    /// Whether it has an instance, and has not released it.
    bool isOpen() const { return descriptor_.is_open(); }

    /// @{
    /// The watch of an item, or -1 with `errno`. An item has one watch, however often it is added.
    int add(const char* path, std::uint32_t events);
    int add(int openItem, std::uint32_t events);
    /// @}

    /// Leaves a record (IN_IGNORED) to be read.
    void remove(int watch);

    /// Calls the handler once, on the executor, when there are records; not after the end.
    void waitForRecords(std::function<void()> handler);

    /// What there is by now, as much as the buffer holds. Does not wait.
    InotifyRecords read(std::span<char> buffer);

    /// Gives the descriptor to the caller, with its watches.
    int release();

private:
    asio::posix::stream_descriptor descriptor_;
};

} // namespace Platform
