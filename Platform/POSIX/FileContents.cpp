#include "Platform/FileContents.h"

#include "Platform/FileHandle.h"

namespace Platform::FileContents {

Expected<std::vector<std::byte>> read(const URL& file, std::size_t largestSize) {
    constexpr std::size_t step = std::size_t{64} * 1024;
    auto handle = FileHandle::openForReading(file);
    if (!handle)
        return handle.error();
    if (handle->kind() != FileHandle::Kind::regular)
        return Error{file.path() + ": not a file"};
    std::vector<std::byte> bytes;
    for (;;) {
        const auto size = bytes.size();
        bytes.resize(size + step);
        const auto count = handle->read(std::span(bytes).subspan(size));
        if (!count)
            return count.error();
        if (size + *count > largestSize)
            return Error{file.path() + ": too large"};
        bytes.resize(size + *count);
        if (*count == 0)
            return bytes;
    }
}

std::optional<Error> write(const URL& file, std::span<const std::byte> bytes) {
    auto handle = FileHandle::openForWriting(file);
    if (!handle)
        return handle.error();
    if (auto error = handle->write(bytes))
        return error;
    return handle->close();
}

} // namespace Platform::FileContents
