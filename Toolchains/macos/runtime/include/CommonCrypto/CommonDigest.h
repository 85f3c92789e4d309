// CommonCrypto over OpenSSL, whose contexts are held and used in the same way: CC_SHA256(3cc).
#pragma once
#include <openssl/sha.h>
#include <stdint.h>

typedef uint32_t CC_LONG;
typedef SHA256_CTX CC_SHA256_CTX;
#define CC_SHA256_DIGEST_LENGTH SHA256_DIGEST_LENGTH
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
inline int CC_SHA256_Init(CC_SHA256_CTX* context) { return SHA256_Init(context); }
inline int CC_SHA256_Update(CC_SHA256_CTX* context, const void* data, CC_LONG length) {
    return SHA256_Update(context, data, length);
}
inline int CC_SHA256_Final(unsigned char* digest, CC_SHA256_CTX* context) {
    return SHA256_Final(digest, context);
}
