#include "CorbelKit/Formats/StringEncoding.h"

#include "Platform/TextServices.h"
#include "Platform/UTF8.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace CorbelKit {
namespace {

namespace TextServices = Platform::TextServices;

constexpr auto none = std::string_view::npos;
constexpr std::size_t fewestCodeUnits = 10;

// No registered name comes near this length. What is longer is cut, and so as unknown as before.
constexpr std::size_t longestName = 256;

// What the processor's nearest cache holds: checked as UTF-8, it is searched without another read
// of memory.
constexpr std::size_t blockSize = 16'384;

/// Where the text behind the first of each word begins.
struct Claims {
    std::size_t charset = none;
    std::size_t encoding = none;
};

/// Looks for the words in a block, which may begin in the one before. Both end in a character that
/// is rarer in texts than any of their letters.
void findClaims(std::string_view text, std::size_t begin, std::size_t end, Claims& claims) {
    const auto read = text.substr(0, end);
    for (auto sign = read.find('=', begin); sign != none; sign = read.find('=', sign + 1)) {
        const auto before = read.substr(0, sign);
        if (before.ends_with("charset")) {
            claims.charset = sign + 1;
            return;
        }
        if (claims.encoding == none && before.ends_with("encoding"))
            claims.encoding = sign + 1;
    }
}

/// The end of a block, moved before a character that it would cut.
std::size_t characterBoundary(std::string_view text, std::size_t end) {
    if (end >= text.size())
        return text.size();
    constexpr std::size_t mostContinuations = 3;
    const auto isContinuation = [&] { return (static_cast<unsigned char>(text[end]) >> 6) == 2; };
    for (std::size_t step = 0; step < mostContinuations && isContinuation(); ++step)
        --end;
    return end;
}

/// Nothing when the text is not UTF-8.
std::optional<Claims> claimsOf(std::string_view text) {
    Claims claims;
    for (std::size_t begin = 0; begin < text.size();) {
        const auto end = characterBoundary(text, begin + blockSize);
        if (!Platform::UTF8::isWellFormed(text.substr(begin, end - begin)))
            return std::nullopt;
        if (claims.charset == none)
            findClaims(text, begin, end, claims);
        begin = end;
    }
    return claims;
}

bool hasCodeUnits(std::string_view text, std::size_t fewest) {
    std::size_t units = 0;
    while (units < fewest && !text.empty()) {
        const auto length = Platform::UTF8::decodeFirst(text).length;
        units += length == 4 ? 2 : 1; // a surrogate pair
        text.remove_prefix(length);
    }
    return units >= fewest;
}

std::string_view charsetName(std::string_view behind) {
    const auto name = behind.substr(0, longestName + 1);
    return name.substr(0, name.find_first_of("\" ';>"));
}

std::string_view encodingName(std::string_view behind) {
    if (behind.empty())
        return {};
    constexpr std::size_t quotes = 2;
    auto name = behind.substr(Platform::UTF8::decodeFirst(behind).length, longestName + quotes + 1);
    name = name.substr(0, name.find("?>"));
    if (name.starts_with('"'))
        name.remove_prefix(1);
    if (name.ends_with('"'))
        name.remove_suffix(1);
    return name;
}

std::int64_t encodingOfMark(std::string_view text) {
    if (text.size() < 3)
        return 0;
    if (text.starts_with("\xEF\xBB\xBF"))
        return TextServices::utf8Encoding;
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"))
        return TextServices::unicodeEncoding;
    return 0;
}

} // namespace

std::vector<StringEncoding> availableStringEncodings() {
    std::vector<StringEncoding> encodings;
    for (const auto tag : TextServices::availableStringEncodings())
        encodings.push_back({.name = TextServices::localizedName(tag), .tag = tag});
    std::ranges::sort(encodings, [](const auto& first, const auto& second) {
        return TextServices::localizedStandardCompare(first.name, second.name) < 0;
    });
    return encodings;
}

std::int64_t guessEncoding(std::span<const std::byte> bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const auto claims = claimsOf(text);
    if (!claims || !hasCodeUnits(text, fewestCodeUnits))
        return 0;
    const auto encodingNamed = [](std::string_view name) {
        return TextServices::encodingForIANACharSetName(name).value_or(0);
    };
    if (claims->charset != none)
        return encodingNamed(charsetName(text.substr(claims->charset)));
    if (claims->encoding != none)
        return encodingNamed(encodingName(text.substr(claims->encoding)));
    return encodingOfMark(text);
}

} // namespace CorbelKit
