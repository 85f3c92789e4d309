#pragma once

#include "Platform/Digest.h"
#include "Platform/Expected.h"
#include "Platform/FileHandle.h"
#include "Vesper_Pro_Agent/MonitoredJob.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>

namespace Vesper_Pro_Agent {

/// Reads one job file after another with the same buffer. For one thread at a time.
class JobFileReader {
public:
    /// Of a file with more than `maximumRead` bytes, the checksum is of that much of it and of its
    /// size, and it has no label: a sparse file can be larger than anything could be read in a day,
    /// and one that grows while it is read would never come to its end.
    ///
    /// `goesOn` is called before each step of reading; once it says no, reading fails.
    explicit JobFileReader(std::function<bool()> goesOn,
                           std::uint64_t maximumRead = std::uint64_t{4} << 30);

    /// Absent when the file was not opened, cannot be read, or is no regular file. `known` is the
    /// file as it was seen before, if it was: with the same content, its label is taken over
    /// unread.
    std::optional<MonitoredJob> read(Platform::Expected<Platform::FileHandle> file,
                                     std::optional<MonitoredJob> known);

private:
    // Holds nearly every job file whole; for the tools beside them, few enough system calls.
    using Buffer = std::array<std::byte, std::size_t{128} * 1024>;

    /// As much of the file as fits the buffer; less only at its end. Absent when reading failed. Of
    /// a size that is given, the end is there once as much has been read: most files save a call.
    std::optional<std::span<const std::byte>>
    fillBuffer(Platform::FileHandle& file, std::optional<std::uint64_t> size = std::nullopt);

    MonitoredJob readSmallFile(std::span<const std::byte> content,
                               std::optional<MonitoredJob> known);
    std::optional<MonitoredJob> readLargeFile(std::span<const std::byte> beginning,
                                              Platform::FileHandle& file,
                                              std::optional<MonitoredJob> known);

    /// What a file that fills the buffer came to, read to its end or to the most that is read.
    struct Content {
        Platform::SHA256::Value checksum;
        bool isWhole;
    };

    /// `use` has each piece as well. Absent when reading failed.
    std::optional<Content> readOn(std::span<const std::byte> beginning, Platform::FileHandle& file,
                                  const std::function<void(std::span<const std::byte>)>& use);

    const std::function<bool()> goesOn_;
    const std::uint64_t maximumRead_;
    Platform::SHA256 digest_;
    const std::unique_ptr<Buffer> buffer_; // no page of it is taken before it is used
};

} // namespace Vesper_Pro_Agent
