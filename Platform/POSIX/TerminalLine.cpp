#include "Platform/POSIX/TerminalLine.h"

#include "Platform/PrintableText.h"

namespace Platform {

std::string terminalLine(std::initializer_list<std::string_view> texts,
                         std::string_view separator) {
    std::string line;
    for (const auto text : texts) {
        if (!line.empty() && !text.empty())
            line += separator;
        line += printableText(text, ActingCharacters::spaced);
    }
    return line;
}

} // namespace Platform
