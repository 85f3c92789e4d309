#pragma once

#include "Platform/FileHandle.h"

#include <array>
#include <string>

/// Everything up to the end, or up to the first failure.
inline std::string readAll(Platform::FileHandle& handle) {
    std::string text;
    std::array<std::byte, 1000> buffer{};
    for (;;) {
        const auto count = handle.read(buffer);
        if (!count || *count == 0)
            return text;
        text.append(reinterpret_cast<const char*>(buffer.data()), *count);
    }
}
