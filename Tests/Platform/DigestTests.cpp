#include "Platform/Digest.h"
#include "Tests/Support/Testing.h"

// The example messages of FIPS 180-4, and the message of no bytes.
TEST(Digest, AgreesWithThePublishedExamplesHoweverTheBytesAreCut) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
        {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
         "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
        {std::string(1'000'000, 'a'),
         "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"},
    };
    Platform::SHA256 sha256; // one for all, so that a rest of the digest before would show
    for (const auto& [text, expected] : cases) {
        for (const std::size_t chunk : {1U, 7U, 63U, 65U, 4096U}) {
            for (std::size_t begin = 0; begin < text.size(); begin += chunk)
                sha256.update(TestSupport::bytesOf(text.substr(begin, chunk)));
            std::ostringstream digest;
            digest << std::hex << std::setfill('0');
            for (const auto byte : sha256.finalize())
                digest << std::setw(2) << std::to_integer<int>(byte);
            EXPECT_EQ(digest.str(), expected) << chunk;
        }
    }
}
