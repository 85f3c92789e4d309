#include "Platform/Digest.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using Platform::SHA256;

namespace {

std::string hexadecimal(const SHA256::Value& value) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const auto byte : value) {
        text += digits[std::to_integer<std::size_t>(byte >> 4)];
        text += digits[std::to_integer<std::size_t>(byte & std::byte{15})];
    }
    return text;
}

SHA256::Value digest(SHA256& sha256, std::string_view text, std::size_t chunk) {
    for (auto bytes = std::as_bytes(std::span(text)); !bytes.empty();) {
        const auto count = std::min(chunk, bytes.size());
        sha256.update(bytes.first(count));
        bytes = bytes.subspan(count);
    }
    return sha256.finalize();
}

} // namespace

// The example messages of FIPS 180-4, and the message of no bytes.
TEST(Digest, AgreesWithThePublishedExamplesHoweverTheBytesAreCut) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
        {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
         "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
        {std::string(1'000'000, 'a'),
         "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"},
    };
    SHA256 sha256; // one for all, so that a rest of the digest before would show
    for (const auto& [text, expected] : cases) {
        for (const auto chunk : std::initializer_list<std::size_t>{1, 7, 63, 65, 4096})
            EXPECT_EQ(hexadecimal(digest(sha256, text, chunk)), expected) << chunk;
    }
}
