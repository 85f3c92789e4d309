#include "Tools/JobLink/Core/KeyFile.h"

#include "Tools/JobLink/Core/DescribedText.h"

#include <algorithm>
#include <array>
#include <ranges>

namespace JobLink {
namespace {

constexpr std::size_t mostEntries = 2000; // no job has as many

bool isComment(std::string_view line) {
    return line.starts_with('#') || line.starts_with(';');
}

/// The next line without blanks around it, and those that it is joined with.
std::string takeLine(std::string_view& text, KeyFile::Lines lines) {
    std::string line(trimmed(takeUntil(text, "\n")));
    if (lines == KeyFile::Lines::apart || isComment(line))
        return line;
    while (line.ends_with('\\')) {
        line.back() = ' ';
        auto next = trimmed(takeUntil(text, "\n"));
        while (isComment(next))
            next = trimmed(takeUntil(text, "\n"));
        line += next;
    }
    return line;
}

} // namespace

KeyFile KeyFile::read(std::string_view text, Lines lines) {
    KeyFile file;
    std::string section;
    while (!text.empty() && file.entries_.size() < mostEntries) {
        const auto line = takeLine(text, lines);
        if (isComment(line))
            continue;
        if (const auto begun = sectionBegunBy(line)) {
            section = *begun;
            continue;
        }
        const auto sign = line.find('=');
        if (sign == std::string::npos)
            continue;
        const std::string_view whole = line;
        file.entries_.push_back({.section = section,
                                 .key = std::string(trimmed(whole.substr(0, sign))),
                                 .value = std::string(trimmed(whole.substr(sign + 1)))});
    }
    return file;
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
        if (entry.section == section && entry.key == key)
            return entry.value;
    }
    return std::nullopt;
}

std::vector<std::string_view> KeyFile::values(std::string_view section,
                                              std::string_view key) const {
    std::vector<std::string_view> found;
    for (const auto& entry : entries_) {
        if (entry.section != section || entry.key != key)
            continue;
        if (entry.value.empty()) {
            found.clear();
        } else {
            found.push_back(entry.value);
        }
    }
    return found;
}

bool KeyFile::isTrue(std::string_view section, std::string_view key) const {
    constexpr std::array<std::string_view, 5> yes{"true", "1", "yes", "on", "y"};
    const auto found = value(section, key);
    return found && std::ranges::count(yes, *found) > 0;
}

} // namespace JobLink
