#pragma once

#include "Platform/URL.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/WaitUntil.h"

#include <gmock/gmock.h>

#include <span>

/// What nearly every test of the kit and the platform uses.
namespace TestSupport {

namespace fs = std::filesystem;

inline Platform::URL fileURL(const fs::path& path) {
    return Platform::URL::file(path.string());
}

inline Platform::URL folderURL(const fs::path& path) {
    return Platform::URL::file(path.string(), Platform::URL::DirectoryHint::isDirectory);
}

inline std::span<const std::byte> bytesOf(std::string_view text) {
    return std::as_bytes(std::span(text));
}

inline std::string textOf(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// How many descriptors this process has open.
inline std::ptrdiff_t openDescriptors() {
    return std::distance(fs::directory_iterator("/dev/fd"), {});
}

} // namespace TestSupport
