#include "Platform/Linux/Desktop/FontDescription.h"

#include <algorithm>
#include <cstddef>
#include <ranges>
#include <utility>

namespace Platform {
namespace {

std::vector<std::string> wordsOf(std::string_view text) {
    std::vector<std::string> words;
    for (const auto word : text | std::views::split(' ')) {
        if (!word.empty())
            words.emplace_back(word.begin(), word.end());
    }
    return words;
}

// Variations ("@wght=200") and features ("#liga=0").
bool isParticular(const std::string& word) {
    return word.front() == '@' || word.front() == '#';
}

// In points, or in pixels ("10px").
bool isSize(std::string_view word) {
    if (word.ends_with("px"))
        word.remove_suffix(2);
    return word.find_first_not_of("0123456789.") == std::string_view::npos;
}

std::string joined(const std::vector<std::string>& words, std::size_t count) {
    std::string text;
    for (const auto& word : words | std::views::take(count))
        text += (text.empty() ? "" : " ") + word;
    return text;
}

} // namespace

FontDescription FontDescription::parse(std::string_view text,
                                       const std::function<bool(const std::string&)>& isFamily) {
    constexpr std::size_t longest = 256;
    const auto firstOfList = text.substr(0, std::min(text.find(','), longest));
    auto words = wordsOf(firstOfList);
    while (!words.empty() && isParticular(words.back()))
        words.pop_back();
    if (!words.empty() && isSize(words.back()))
        words.pop_back();
    for (std::size_t count = words.size(); count > 0; --count) {
        auto family = joined(words, count);
        if (!isFamily(family))
            continue;
        words.erase(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(count));
        return {.family = std::move(family), .styleWords = std::move(words)};
    }
    return {};
}

} // namespace Platform
