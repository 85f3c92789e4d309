#include "Platform/Digest.h"

#include <CommonCrypto/CommonDigest.h>

#include <algorithm>
#include <limits>

namespace Platform {

struct SHA256::Impl {
    Impl() { CC_SHA256_Init(&context); }

    CC_SHA256_CTX context{};
};

SHA256::SHA256()
    : impl_(std::make_unique<Impl>()) {}

SHA256::~SHA256() = default;
SHA256::SHA256(SHA256&&) noexcept = default;
SHA256& SHA256::operator=(SHA256&&) noexcept = default;

void SHA256::update(std::span<const std::byte> bytes) {
    constexpr std::size_t most =
        std::numeric_limits<CC_LONG>::max(); // CommonCrypto counts in 32 bits
    while (!bytes.empty()) {
        const auto part = bytes.first(std::min(bytes.size(), most));
        CC_SHA256_Update(&impl_->context, part.data(), static_cast<CC_LONG>(part.size()));
        bytes = bytes.subspan(part.size());
    }
}

SHA256::Value SHA256::finalize() {
    static_assert(CC_SHA256_DIGEST_LENGTH == sizeof(Value));
    Value value{};
    CC_SHA256_Final(reinterpret_cast<unsigned char*>(value.data()), &impl_->context);
    CC_SHA256_Init(&impl_->context);
    return value;
}

} // namespace Platform
