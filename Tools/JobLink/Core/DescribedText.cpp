#include "Tools/JobLink/Core/DescribedText.h"

#include "CorbelKit/Services/PrintableText.h"

#include <algorithm>

namespace JobLink {
namespace {

constexpr std::size_t longestText = 400; // bytes
constexpr std::size_t mostTexts = 24;
constexpr std::string_view ellipsis = "\xE2\x80\xA6";

} // namespace

std::string describedText(std::string_view bytes) {
    if (bytes.size() <= longestText)
        return CorbelKit::printableText(bytes);
    auto end = longestText;
    const auto continues = [&] { return (static_cast<unsigned char>(bytes[end]) >> 6U) == 2; };
    while (end > longestText - 4 && continues())
        --end;
    return CorbelKit::printableText(bytes.substr(0, end)).append(ellipsis);
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

std::string_view takeUntil(std::string_view& text, std::string_view separators) {
    const auto end = std::min(text.find_first_of(separators), text.size());
    const auto taken = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return taken;
}

void addRun(JobDescription& description, std::string_view command) {
    if (!command.empty() && description.runs.size() <= mostTexts) {
        const bool isShown = description.runs.size() < mostTexts;
        description.runs.push_back(isShown ? describedText(command) : std::string(ellipsis));
    }
}

void addStart(JobDescription& description, JobStart::Kind kind, std::string_view detail) {
    if (description.starts.size() < mostTexts) {
        description.starts.push_back({.kind = kind, .detail = describedText(detail)});
    } else if (description.starts.size() == mostTexts) {
        description.starts.push_back({.kind = JobStart::Kind::more});
    }
}

} // namespace JobLink
