#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <span>

namespace Platform {

/// The SHA-256 digest of a stream of bytes (FIPS 180-4). For one thread at a time.
class SHA256 {
public:
    /// In the order in which the bytes are written out.
    using Value = std::array<std::byte, 32>;

    SHA256();
    ~SHA256();
    SHA256(SHA256&&) noexcept;
    SHA256& operator=(SHA256&&) noexcept;
    SHA256(const SHA256&) = delete;
    SHA256& operator=(const SHA256&) = delete;

    /// Appends to the stream.
    void update(std::span<const std::byte> bytes);

    /// The digest of all bytes since the start or the last `finalize`; starts anew.
    Value finalize();

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace Platform
