#include "Platform/PropertyList/Form.h"

namespace Platform::PropertyLists {

namespace {

using Format = PropertyList::Format;

constexpr std::string_view binaryMark = "bplist0";

/// The code units of the first bytes, as far as they are ASCII.
struct Units {
    std::string_view bytes;
    std::size_t width = 1;
    std::size_t lowByte = 0; ///< its place in the unit
    std::size_t begin = 0;   ///< behind the byte-order mark

    std::optional<char> at(std::size_t position) const {
        if (position + width > bytes.size())
            return std::nullopt;
        const bool ascii = width == 1 || bytes[position + 1 - lowByte] == '\0';
        return ascii ? bytes[position + lowByte] : '\x7F';
    }
};

Units unitsOf(std::string_view bytes) {
    using namespace std::string_view_literals;
    if (bytes.starts_with("\xEF\xBB\xBF"))
        return {.bytes = bytes, .width = 1, .lowByte = 0, .begin = 3};
    if (bytes.starts_with("\xFF\xFE"))
        return {.bytes = bytes, .width = 2, .lowByte = 0, .begin = 2};
    if (bytes.starts_with("\xFE\xFF"))
        return {.bytes = bytes, .width = 2, .lowByte = 1, .begin = 2};
    if (bytes.starts_with("<\0"sv))
        return {.bytes = bytes, .width = 2, .lowByte = 0, .begin = 0};
    if (bytes.starts_with("\0<"sv))
        return {.bytes = bytes, .width = 2, .lowByte = 1, .begin = 0};
    return {.bytes = bytes};
}

bool isSpace(char unit) {
    return unit == ' ' || (unit >= '\t' && unit <= '\r');
}

bool isHexDigit(char unit) {
    return (unit >= '0' && unit <= '9') || (unit >= 'a' && unit <= 'f') ||
           (unit >= 'A' && unit <= 'F');
}

/// What stands behind a '<': old-style data are hexadecimal digits, and no element of a property
/// list has a name that begins with three of them.
std::optional<Format> formatBehindBracket(const Units& units, std::size_t position) {
    constexpr std::size_t longestHexBeginning = 3;
    for (std::size_t count = 0; count < longestHexBeginning; ++count, position += units.width) {
        const auto unit = units.at(position);
        if (!unit)
            return std::nullopt;
        if (!isHexDigit(*unit))
            return isSpace(*unit) || *unit == '>' ? Format::text : Format::xml;
    }
    return Format::text;
}

std::optional<Form> markedForm(const Units& units) {
    auto position = units.begin;
    auto unit = units.at(position);
    while (unit && isSpace(*unit)) {
        position += units.width;
        unit = units.at(position);
    }
    if (!unit)
        return std::nullopt;
    if (*unit != '<')
        return Form{.format = Format::text, .begin = 0};
    const auto format = formatBehindBracket(units, position + units.width);
    if (!format)
        return std::nullopt;
    // Expat needs the mark of UTF-16, and allows nothing at all before an XML declaration.
    const bool skipsSpace = *format == Format::xml && units.width == 1;
    return Form{.format = *format, .begin = skipsSpace ? position : 0};
}

} // namespace

std::optional<Form> formOf(std::string_view firstBytes, bool complete) {
    if (firstBytes.starts_with(binaryMark))
        return Form{.format = Format::binary, .begin = 0};
    // Three bytes hold every mark.
    const bool mayBecomeMark = firstBytes.size() < 3 || binaryMark.starts_with(firstBytes);
    auto form = mayBecomeMark && !complete ? std::nullopt
                                           : markedForm(unitsOf(firstBytes.substr(0, formWindow)));
    if (!form && (complete || firstBytes.size() >= formWindow))
        form = Form{.format = Format::text, .begin = 0};
    return form;
}

} // namespace Platform::PropertyLists
