#include "Platform/PropertyList/TextScanner.h"

#include "Platform/PropertyList/TextEncodings.h"

#include <algorithm>
#include <cstdint>

namespace Platform::PropertyLists {

namespace {

constexpr std::string_view spaces = " \t\n\v\f\r";
constexpr std::string_view unquotedCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_$/:.-";

unsigned digitValue(char character) {
    if (character >= '0' && character <= '9')
        return static_cast<unsigned>(character - '0');
    if (character >= 'a' && character <= 'f')
        return static_cast<unsigned>(character - 'a') + 10;
    if (character >= 'A' && character <= 'F')
        return static_cast<unsigned>(character - 'A') + 10;
    return 16;
}

/// The character that a backslash and this one stand for; most stand for themselves.
char escapedCharacter(char character) {
    constexpr std::string_view names = "abfnrtv";
    constexpr std::string_view meanings = "\a\b\f\n\r\t\v";
    const auto index = names.find(character);
    return index == std::string_view::npos ? character : meanings[index];
}

} // namespace

bool TextScanner::atEnd() {
    return skip() && rest_.empty();
}

bool TextScanner::take(char character) {
    if (!skip() || !rest_.starts_with(character))
        return false;
    rest_.remove_prefix(1);
    return true;
}

bool TextScanner::skip() {
    for (;;) {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(spaces), rest_.size()));
        if (rest_.starts_with("//")) {
            rest_.remove_prefix(std::min(rest_.find_first_of("\n\r"), rest_.size()));
            continue;
        }
        if (!rest_.starts_with("/*"))
            return true;
        const auto end = rest_.find("*/", 2);
        if (end == std::string_view::npos) {
            isUnended_ = true;
            return false;
        }
        rest_.remove_prefix(end + 2);
    }
}

std::optional<std::string> TextScanner::string() {
    for (const char quote : {'"', '\''}) {
        if (take(quote))
            return quoted(quote);
    }
    auto text = unquoted();
    if (text.empty())
        return std::nullopt;
    return text;
}

std::string TextScanner::unquoted() {
    const auto length = std::min(rest_.find_first_not_of(unquotedCharacters), rest_.size());
    std::string text(rest_.substr(0, length));
    rest_.remove_prefix(length);
    return text;
}

std::optional<std::string> TextScanner::quoted(char quote) {
    std::string text;
    const std::string stops{quote, '\\'};
    for (;;) {
        const auto length = rest_.find_first_of(stops);
        if (length == std::string_view::npos) {
            isUnended_ = true;
            return std::nullopt;
        }
        text.append(rest_.substr(0, length));
        const bool isEnd = rest_[length] == quote;
        rest_.remove_prefix(length + 1);
        if (isEnd)
            return text;
        if (!escape(text))
            return std::nullopt;
    }
}

bool TextScanner::escape(std::string& text) {
    if (rest_.empty())
        return false;
    if (digitValue(rest_.front()) < 8)
        return octal(text);
    const char character = rest_.front();
    rest_.remove_prefix(1);
    if (character == 'U' || character == 'u')
        return unicode(text);
    text.push_back(escapedCharacter(character));
    return true;
}

bool TextScanner::octal(std::string& text) {
    constexpr unsigned largestCode = 0xFF;
    const auto code = number(8, 3);
    if (!code || *code > largestCode)
        return false;
    appendUTF8(text, fromNextStep(static_cast<unsigned char>(*code)));
    return true;
}

bool TextScanner::unicode(std::string& text) {
    const auto unit = number(16, 4);
    if (!unit)
        return false;
    if (isLeadSurrogate(*unit) && (rest_.starts_with("\\U") || rest_.starts_with("\\u"))) {
        const auto behindLead = rest_;
        rest_.remove_prefix(2);
        const auto trail = number(16, 4);
        if (trail && isTrailSurrogate(*trail)) {
            appendUTF8(text, fromSurrogates(*unit, *trail));
            return true;
        }
        rest_ = behindLead;
    }
    appendUTF8(text, *unit);
    return true;
}

std::optional<unsigned> TextScanner::number(unsigned base, std::size_t mostDigits) {
    unsigned value = 0;
    std::size_t digits = 0;
    for (; digits < mostDigits && digits < rest_.size() && digitValue(rest_[digits]) < base;
         ++digits)
        value = value * base + digitValue(rest_[digits]);
    rest_.remove_prefix(digits);
    return digits > 0 ? std::optional(value) : std::nullopt;
}

std::optional<std::string> TextScanner::data() {
    std::string bytes;
    bool isHalf = false;
    unsigned high = 0;
    for (; !rest_.empty(); rest_.remove_prefix(1)) {
        const char character = rest_.front();
        const auto digit = digitValue(character);
        if (character == '>') {
            rest_.remove_prefix(1);
            return isHalf ? std::nullopt : std::optional(bytes);
        }
        if (spaces.find(character) != std::string_view::npos)
            continue;
        if (digit > 15)
            return std::nullopt;
        if (isHalf)
            bytes.push_back(static_cast<char>(high << 4 | digit));
        high = digit;
        isHalf = !isHalf;
    }
    return std::nullopt;
}

} // namespace Platform::PropertyLists
