#include "Tools/JobLink/Core/KeyFile.h"

#include "Tools/JobLink/Core/DescribedText.h"

#include <ranges>

namespace JobLink {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF"; // which systemd passes over

bool isComment(std::string_view line) {
    return line.starts_with('#') || line.starts_with(';');
}

/// Two backslashes are one that is meant.
bool isContinued(std::string_view line) {
    const auto last = line.find_last_not_of('\\');
    return (line.size() - (last == std::string_view::npos ? 0 : last + 1)) % 2 == 1;
}

/// As systemd ends it: by each kind of end once, so that "\r\n" is one and "\n\n" two. A NUL is
/// always the last.
std::string_view takeLine(std::string_view& text) {
    constexpr std::string_view ends("\n\r\0", 3);
    auto line = text.substr(0, text.find_first_of(ends));
    text.remove_prefix(line.size());
    std::size_t length = 0;
    while (length < text.size() && ends.find(text[length]) != std::string_view::npos &&
           text.find(text[length]) == length) {
        ++length;
        if (text[length - 1] == '\0')
            break;
    }
    text.remove_prefix(length);
    while (line.starts_with(byteOrderMark))
        line.remove_prefix(byteOrderMark.size());
    return line;
}

std::string_view takeTrimmed(std::string_view& text, KeyFile::Lines lines) {
    return trimmed(lines == KeyFile::Lines::apart ? takeUntil(text, "\n") : takeLine(text));
}

/// The next line without blanks around it, and those that it is joined with.
std::string takeJoined(std::string_view& text, KeyFile::Lines lines) {
    std::string line(takeTrimmed(text, lines));
    if (lines == KeyFile::Lines::apart || isComment(line))
        return line;
    while (isContinued(line)) {
        line.back() = ' ';
        auto next = takeTrimmed(text, lines);
        while (isComment(next))
            next = takeTrimmed(text, lines);
        line += next;
    }
    return line;
}

} // namespace

KeyFile KeyFile::read(std::string_view text, Lines lines) {
    KeyFile file;
    file.sections_.push_back({.name = {}, .isExact = false});
    while (!text.empty()) {
        const auto line = takeJoined(text, lines);
        if (isComment(line))
            continue;
        if (const auto begun = sectionBegunBy(line)) {
            const bool isExact = line.find(']') + 1 == line.size();
            file.sections_.push_back({.name = std::string(*begun), .isExact = isExact});
            continue;
        }
        const auto sign = line.find('=');
        if (sign == std::string::npos)
            continue;
        const std::string_view whole = line;
        file.entries_.push_back({.section = file.sections_.size() - 1,
                                 .key = std::string(trimmed(whole.substr(0, sign))),
                                 .value = std::string(trimmed(whole.substr(sign + 1)))});
    }
    return file;
}

bool KeyFile::isReadAlike(std::string_view text) {
    constexpr std::string_view disputed("\r\0\\", 3);
    return text.find_first_of(disputed) == std::string_view::npos &&
           text.find(byteOrderMark) == std::string_view::npos;
}

std::optional<std::string_view> KeyFile::sectionBegunBy(std::string_view line) {
    if (!line.starts_with('['))
        return std::nullopt;
    line.remove_prefix(1);
    return line.substr(0, line.find(']'));
}

std::optional<std::string_view> KeyFile::value(std::string_view section,
                                               std::string_view key) const {
    for (const auto& entry : std::views::reverse(entries_)) {
        if (isOf(entry, section, key))
            return entry.value;
    }
    return std::nullopt;
}

std::vector<std::string_view> KeyFile::values(std::string_view section,
                                              std::string_view key) const {
    std::vector<std::string_view> found;
    for (const auto& entry : entries_) {
        if (!isOf(entry, section, key))
            continue;
        if (entry.value.empty()) {
            found.clear();
        } else {
            found.push_back(entry.value);
        }
    }
    return found;
}

std::vector<std::string_view> KeyFile::allValues(std::string_view section,
                                                 std::string_view key) const {
    std::vector<std::string_view> found;
    for (const auto& entry : entries_) {
        if (isOf(entry, section, key) && !entry.value.empty())
            found.emplace_back(entry.value);
    }
    return found;
}

bool KeyFile::isTrue(std::string_view section, std::string_view key) const {
    bool isSo = false;
    for (const auto& entry : entries_) {
        if (!isOf(entry, section, key))
            continue;
        const bool isYes = entry.value == "true" || entry.value == "1";
        if (!isYes || sections_[entry.section].isExact)
            isSo = isYes;
    }
    return isSo;
}

bool KeyFile::isOf(const Entry& entry, std::string_view section, std::string_view key) const {
    return entry.key == key && sections_[entry.section].name == section;
}

} // namespace JobLink
