#include "Platform/PropertyList/XMLScalars.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <type_traits>

// Where some systems have strtod_l.
#if __has_include(<xlocale.h>)
#include <xlocale.h>
#endif

namespace Platform::PropertyLists {

namespace {

/// The sign taken off the front; true when it was a minus.
bool takeSign(std::string_view& text) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    return negative;
}

int takeBase(std::string_view& text) {
    if (!text.starts_with("0x") && !text.starts_with("0X"))
        return 10;
    text.remove_prefix(2);
    return 16;
}

template <class Number>
std::optional<Number> wholeNumber(std::string_view digits, int base = 10) {
    Number number = 0;
    const auto* const end = std::to_address(digits.end());
    const auto result = std::from_chars(std::to_address(digits.begin()), end, number, base);
    if (result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    return number;
}

/// A process that sets a locale must not change what a number means.
double numberInAnyLocale(const char* text) {
    struct Free {
        void operator()(locale_t locale) const { freelocale(locale); }
    };

    static const std::unique_ptr<std::remove_pointer_t<locale_t>, Free> locale(
        newlocale(LC_NUMERIC_MASK, "C", nullptr));
    return strtod_l(text, nullptr, locale.get());
}

std::optional<double> spelledNumber(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
    });
    if (lower == "nan")
        return std::numeric_limits<double>::quiet_NaN();
    if (lower == "inf" || lower == "infinity")
        return std::numeric_limits<double>::infinity();
    return std::nullopt;
}

/// What strtod takes in full, less its hexadecimal numbers and payloads of NaN.
bool isDecimal(std::string_view text) {
    const auto takeDigits = [&text] {
        const auto count = std::min(text.find_first_not_of("0123456789"), text.size());
        text.remove_prefix(count);
        return count;
    };
    auto digits = takeDigits();
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        digits += takeDigits();
    }
    if (digits > 0 && (text.starts_with('e') || text.starts_with('E'))) {
        text.remove_prefix(1);
        takeSign(text);
        digits = takeDigits();
    }
    return digits > 0 && text.empty();
}

} // namespace

bool isXMLSpace(char character) {
    return character == ' ' || character == '\n' || character == '\t' || character == '\r';
}

bool isXMLSpace(std::string_view text) {
    return std::ranges::all_of(text, [](char character) { return isXMLSpace(character); });
}

std::optional<Scalar> integerFromXML(const std::string& text) {
    std::string_view digits = text;
    const bool negative = takeSign(digits);
    const int base = takeBase(digits);
    const auto magnitude = wholeNumber<std::uint64_t>(digits, base);
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (!magnitude || (negative && *magnitude > largest + 1))
        return std::nullopt;
    if (negative)
        return static_cast<std::int64_t>(0 - *magnitude);
    if (*magnitude > largest)
        return *magnitude;
    return static_cast<std::int64_t>(*magnitude);
}

std::optional<Scalar> realFromXML(const std::string& text) {
    std::string_view digits = text;
    const bool negative = takeSign(digits);
    if (isDecimal(digits))
        return numberInAnyLocale(text.c_str());
    if (const auto spelled = spelledNumber(digits))
        return std::copysign(*spelled, negative ? -1.0 : 1.0);
    return std::nullopt;
}

std::optional<Scalar> dateFromXML(const std::string& text) {
    constexpr std::string_view pattern = "0000-00-00T00:00:00Z";
    if (text.size() != pattern.size())
        return std::nullopt;
    for (std::size_t index = 0; index < pattern.size(); ++index) {
        const bool digit = text[index] >= '0' && text[index] <= '9';
        if (pattern[index] == '0' ? !digit : text[index] != pattern[index])
            return std::nullopt;
    }
    const auto field = [&text](std::size_t position, std::size_t length) {
        return *wholeNumber<unsigned>(std::string_view(text).substr(position, length));
    };
    const std::chrono::year_month_day day{std::chrono::year(static_cast<int>(field(0, 4))),
                                          std::chrono::month(field(5, 2)),
                                          std::chrono::day(field(8, 2))};
    if (!day.ok() || field(11, 2) > 23 || field(14, 2) > 59 || field(17, 2) > 59)
        return std::nullopt;
    return PropertyList::Date(std::chrono::sys_days(day) + std::chrono::hours(field(11, 2)) +
                              std::chrono::minutes(field(14, 2)) +
                              std::chrono::seconds(field(17, 2)));
}

std::optional<std::string> xmlFromDate(PropertyList::Date date) {
    using namespace std::chrono;
    constexpr PropertyList::Date first = sys_days(year(0) / January / 1);
    constexpr PropertyList::Date end = sys_days(year(10000) / January / 1);
    if (!(date >= first && date < end))
        return std::nullopt;
    const auto whole = floor<seconds>(date);
    const year_month_day day(floor<days>(whole));
    const hh_mm_ss time(whole - floor<days>(whole));
    std::string text;
    const auto field = [&text](auto number, std::size_t width, char separator) {
        const auto digits = std::to_string(number);
        text.append(width - std::min(width, digits.size()), '0').append(digits) += separator;
    };
    field(static_cast<int>(day.year()), 4, '-');
    field(static_cast<unsigned>(day.month()), 2, '-');
    field(static_cast<unsigned>(day.day()), 2, 'T');
    field(time.hours().count(), 2, ':');
    field(time.minutes().count(), 2, ':');
    field(time.seconds().count(), 2, 'Z');
    return text;
}

} // namespace Platform::PropertyLists
