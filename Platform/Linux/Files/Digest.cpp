#include "Platform/Digest.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <cstdio>
#include <cstdlib>

namespace Platform {
namespace {

struct FreeContext {
    void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
};

/// A wrong digest would pass for a change of the file, or hide one; memory that ran out is
/// better shown by the end of the process.
void require(bool success) {
    if (success)
        return;
    std::fputs("libcrypto cannot compute SHA-256\n", stderr);
    std::abort();
}

/// Asked for once: the look-up by name costs more than the digest of a small file. Never given
/// back, and the library stays up to the end: another thread may still compute a digest while the
/// process ends. The library's configuration file has no say in a plain digest; it would cost half
/// a millisecond and 600 kB.
const EVP_MD* algorithm() {
    static const EVP_MD* const sha256 = [] {
        OPENSSL_init_crypto(OPENSSL_INIT_NO_LOAD_CONFIG | OPENSSL_INIT_NO_ATEXIT, nullptr);
        const EVP_MD* fetched = EVP_MD_fetch(nullptr, "SHA256", nullptr);
        require(fetched != nullptr);
        return fetched;
    }();
    return sha256;
}

} // namespace

struct SHA256::Impl {
    Impl() { start(); }

    void start() {
        require(context && EVP_DigestInit_ex2(context.get(), algorithm(), nullptr) == 1);
    }

    std::unique_ptr<EVP_MD_CTX, FreeContext> context{EVP_MD_CTX_new()};
};

SHA256::SHA256()
    : impl_(std::make_unique<Impl>()) {}

SHA256::~SHA256() = default;
SHA256::SHA256(SHA256&&) noexcept = default;
SHA256& SHA256::operator=(SHA256&&) noexcept = default;

void SHA256::update(std::span<const std::byte> bytes) {
    require(EVP_DigestUpdate(impl_->context.get(), bytes.data(), bytes.size()) == 1);
}

SHA256::Value SHA256::finalize() {
    Value value{};
    require(EVP_DigestFinal_ex(impl_->context.get(), reinterpret_cast<unsigned char*>(value.data()),
                               nullptr) == 1);
    impl_->start();
    return value;
}

} // namespace Platform
