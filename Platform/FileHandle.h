#pragma once

#include "Platform/Expected.h"
#include "Platform/URL.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

namespace Platform {

/// Owns one open file descriptor, closed at destruction and never inherited by a started process.
/// For one thread at a time.
class FileHandle {
public:
    /// What was opened.
    enum class Kind { regular, directory, other };

    /// Opens for reading without ever waiting, whatever lies at the path: a pipe without a writer
    /// does not hold the caller, and a terminal does not become the process's own. Ask `kind`
    /// before reading: only a regular file reads without waiting.
    static Expected<FileHandle> openForReading(const URL& url);

    /// Opens an emptied regular file for writing, making it where it is missing. Without waiting;
    /// anything but a regular file is left alone, and a failure.
    static Expected<FileHandle> openForWriting(const URL& url);

    /// Takes the descriptor over; -1 for none.
    explicit FileHandle(int fileDescriptor)
        : fileDescriptor_(fileDescriptor) {}

    FileHandle(FileHandle&& other) noexcept;
    FileHandle& operator=(FileHandle&& other) noexcept;
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle();

    /// -1 once closed.
    int fileDescriptor() const { return fileDescriptor_; }

    /// What the system says of the open item at one moment.
    struct Status {
        Kind kind = Kind::other; ///< of the item itself, so a link counts as what it leads to
        std::uint64_t size = 0;  ///< in bytes, of a regular file; 0 where it is not known
    };

    /// Asks the system once. What it will not say is `Kind::other`, of size 0.
    Status status() const;

    /// The kind alone, asked anew at each call.
    Kind kind() const { return status().kind; }

    /// The size alone, in bytes, asked anew at each call.
    std::uint64_t size() const { return status().size; }

    /// Has the next reading begin anew; false where that is not possible.
    bool rewind();

    /// Reads at most `buffer.size()` bytes; 0 at the end.
    Expected<std::size_t> read(std::span<std::byte> buffer);

    /// Writes all of `bytes`, or gives the reason why not all were written. That a pipe has no
    /// reader any more is such a reason in a process that ignores the signal for it, as an
    /// application does; any other process is ended by the signal.
    std::optional<Error> write(std::span<const std::byte> bytes);

    /// Gives the descriptor to the caller, who closes it.
    int release() { return std::exchange(fileDescriptor_, -1); }

    /// The descriptor is given up in every case; a second call does nothing.
    std::optional<Error> close();

private:
    int fileDescriptor_;
};

/// The two ends of an anonymous pipe, each for one thread at a time.
struct Pipe {
    /// Absent when the system has no descriptor left.
    static std::optional<Pipe> make();

    FileHandle fileHandleForReading; ///< ends when the other end is closed everywhere
    FileHandle fileHandleForWriting; ///< what is written here comes out there
};

} // namespace Platform
