// Every form of a text, compared with what replacements make of it one after the other.

#include "CorbelKit/Formats/LineEnding.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

/// Every form that there is of a text.
std::vector<std::string> forms(const std::string& text) {
    using CorbelKit::converted;
    using CorbelKit::LineEnding;
    return {converted(text, LineEnding::unix), converted(text, LineEnding::windows),
            converted(text, LineEnding::macOS9), CorbelKit::showingPilcrows(text),
            CorbelKit::withoutLineBreaks(text)};
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

/// The same forms by replacements, made one after the other and each in the whole text.
std::vector<std::string> replacedForms(const std::string& text) {
    const auto unix = replaced(replaced(text, "\r\n", "\n"), "\r", "\n");
    return {unix, replaced(unix, "\n", "\r\n"), replaced(replaced(text, "\r\n", "\r"), "\n", "\r"),
            replaced(replaced(text, "\r", "¶"), "\n", "¶"), replaced(unix, "\n", "")};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    if (forms(text) != replacedForms(text))
        std::abort();
    return 0;
}
