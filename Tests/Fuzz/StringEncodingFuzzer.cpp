// A text from anybody, of which the guess is the same wherever the seams between the parts lie in
// which it is read.

#include "CorbelKit/Formats/StringEncoding.h"

#include <cstdlib>
#include <string>

namespace {

std::int64_t guessBehind(std::size_t spaces, const std::string& text) {
    const auto whole = std::string(spaces, ' ') + text;
    return CorbelKit::guessEncoding(std::as_bytes(std::span(whole)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    guessBehind(0, text);
    constexpr std::size_t part = 16'384;
    if (size < part && guessBehind(16, text) != guessBehind(part - size / 2, text))
        std::abort();
    return 0;
}
