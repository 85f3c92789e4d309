#include "Platform/Linux/FileContents.h"

#include "Platform/FileHandle.h"

#include <span>

namespace Platform {

std::optional<std::vector<std::byte>> contentsOf(const URL& file, std::size_t largestSize) {
    constexpr std::size_t step = std::size_t{64} * 1024;
    auto handle = FileHandle::openForReading(file);
    if (!handle || handle->kind() != FileHandle::Kind::regular)
        return std::nullopt;
    std::vector<std::byte> bytes;
    for (;;) {
        const auto size = bytes.size();
        bytes.resize(size + step);
        const auto count = handle->read(std::span(bytes).subspan(size));
        if (!count || size + *count > largestSize)
            return std::nullopt;
        bytes.resize(size + *count);
        if (*count == 0)
            return bytes;
    }
}

} // namespace Platform
