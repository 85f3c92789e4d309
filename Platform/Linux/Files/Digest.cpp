#include "Platform/Digest.h"

// The plain functions, which the library would rather see called through its table of providers:
// setting that up touches 1.3 MB of the library, a ninth of what a resting agent has in memory.
#define OPENSSL_SUPPRESS_DEPRECATED // NOLINT(cppcoreguidelines-macro-usage)
#include <openssl/sha.h>

#include <cstdio>
#include <cstdlib>

namespace Platform {
namespace {

/// A wrong digest would pass for a change of the file, or hide one; memory that ran out is
/// better shown by the end of the process.
void require(bool success) {
    if (success)
        return;
    std::fputs("libcrypto cannot compute SHA-256\n", stderr);
    std::abort();
}

} // namespace

struct SHA256::Impl {
    Impl() { start(); }

    void start() { require(SHA256_Init(&context) == 1); }

    SHA256_CTX context{};
};

SHA256::SHA256()
    : impl_(std::make_unique<Impl>()) {}

SHA256::~SHA256() = default;
SHA256::SHA256(SHA256&&) noexcept = default;
SHA256& SHA256::operator=(SHA256&&) noexcept = default;

void SHA256::update(std::span<const std::byte> bytes) {
    require(SHA256_Update(&impl_->context, bytes.data(), bytes.size()) == 1);
}

SHA256::Value SHA256::finalize() {
    Value value{};
    require(SHA256_Final(reinterpret_cast<unsigned char*>(value.data()), &impl_->context) == 1);
    impl_->start();
    return value;
}

} // namespace Platform
