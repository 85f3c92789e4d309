#include "Platform/Linux/Text/TerminalLine.h"

#include "Platform/UTF8.h"

namespace Platform {
namespace {

// Unicode's general categories Cc, Zl and Zp.
bool acts(char32_t scalar) {
    return scalar < 0x20 || (scalar >= 0x7F && scalar < 0xA0) || scalar == 0x2028 ||
           scalar == 0x2029;
}

void append(std::string& line, std::string_view text) {
    while (!text.empty()) {
        const auto character = UTF8::decodeFirst(text);
        if (!character.wellFormed) {
            line += "\uFFFD";
        } else if (acts(character.scalar)) {
            line += ' ';
        } else {
            line += text.substr(0, character.length);
        }
        text.remove_prefix(character.length);
    }
}

} // namespace

std::string terminalLine(std::initializer_list<std::string_view> texts,
                         std::string_view separator) {
    std::string line;
    for (const auto text : texts) {
        if (!line.empty() && !text.empty())
            line += separator;
        append(line, text);
    }
    return line + '\n';
}

} // namespace Platform
