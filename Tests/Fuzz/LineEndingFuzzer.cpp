#include "CorbelKit/Formats/LineEnding.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

using CorbelKit::LineEnding;

void require(bool condition, const char* claim) {
    if (condition)
        return;
    std::fprintf(stderr, "not so: %s\n", claim);
    std::abort();
}

std::string replaced(const std::string& text, std::string_view old, std::string_view substitute) {
    std::string result;
    for (std::size_t index = 0; index < text.size();) {
        const bool found = text.compare(index, old.size(), old) == 0;
        result += found ? substitute : std::string_view(text).substr(index, 1);
        index += found ? old.size() : 1;
    }
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    const auto unix = replaced(replaced(text, "\r\n", "\n"), "\r", "\n");
    require(CorbelKit::converted(text, LineEnding::unix) == unix, "unix");
    require(CorbelKit::converted(text, LineEnding::windows) == replaced(unix, "\n", "\r\n"),
            "windows");
    require(CorbelKit::converted(text, LineEnding::macOS9) ==
                replaced(replaced(text, "\r\n", "\r"), "\n", "\r"),
            "macOS9");
    require(CorbelKit::showingPilcrows(text) ==
                replaced(replaced(text, "\r", "\xC2\xB6"), "\n", "\xC2\xB6"),
            "pilcrows");
    require(CorbelKit::withoutLineBreaks(text) == replaced(unix, "\n", ""), "no line breaks");
    return 0;
}
