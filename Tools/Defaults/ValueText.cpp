#include "Tools/Defaults/ValueText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <ctime>
#include <string_view>
#include <variant>

namespace Defaults {
namespace {

using Platform::PropertyList;

constexpr std::size_t indentation = 4;

std::string number(auto value) {
    std::array<char, 32> digits{};
    const auto [end, failure] = std::to_chars(digits.begin(), digits.end(), value);
    return failure == std::errc() ? std::string(digits.begin(), end) : std::string();
}

bool isPlain(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char one) {
        return (one >= 'a' && one <= 'z') || (one >= 'A' && one <= 'Z') ||
               (one >= '0' && one <= '9') || one == '_' || one == '.' || one == '/' || one == '-';
    });
}

std::string quoted(std::string_view text) {
    if (isPlain(text))
        return std::string(text);
    std::string result = "\"";
    for (const char one : text) {
        const auto code = static_cast<unsigned char>(one);
        if (one == '"' || one == '\\') {
            result.append({'\\', one});
        } else if (one == '\n') {
            result += "\\n";
        } else if (one == '\t') {
            result += "\\t";
        } else if (code < ' ' || code == 0x7F) { // which a terminal would act on
            result.append({'\\', static_cast<char>('0' + code / 64),
                           static_cast<char>('0' + code / 8 % 8),
                           static_cast<char>('0' + code % 8)});
        } else {
            result += one;
        }
    }
    return result + '"';
}

std::string hexadecimal(const PropertyList::Data& data) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = "<";
    for (const auto byte : data) {
        text += digits[std::to_integer<unsigned>(byte) / 16];
        text += digits[std::to_integer<unsigned>(byte) % 16];
    }
    return text + '>';
}

std::string dateText(PropertyList::Date date) {
    const auto seconds = std::floor(date.time_since_epoch().count());
    constexpr double farthest = 1e15; // some thirty million years, and a time_t everywhere
    if (!(std::abs(seconds) < farthest))
        return number(seconds);
    const auto time = static_cast<std::time_t>(seconds);
    std::tm parts{};
    std::array<char, 64> text{};
    gmtime_r(&time, &parts);
    const auto length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S +0000", &parts);
    return quoted({text.data(), length});
}

/// Property lists nest as deep as their reader allows, which is not deep.
class Writer {
public:
    // NOLINTNEXTLINE(misc-no-recursion): the reader's bound on depth is this one's
    void write(const PropertyList& value, std::size_t margin) {
        std::visit([&](const auto& held) { add(held, margin); }, value.value());
    }

    std::string text;

private:
    void add(PropertyList::Null /*value*/, std::size_t /*margin*/) { text += "<null>"; }

    void add(bool value, std::size_t /*margin*/) { text += value ? '1' : '0'; }

    void add(std::int64_t value, std::size_t /*margin*/) { text += number(value); }

    void add(std::uint64_t value, std::size_t /*margin*/) { text += number(value); }

    void add(double value, std::size_t /*margin*/) { text += quoted(number(value)); }

    void add(PropertyList::Date value, std::size_t /*margin*/) { text += dateText(value); }

    void add(const PropertyList::Data& value, std::size_t /*margin*/) {
        text += hexadecimal(value);
    }

    void add(const std::string& value, std::size_t /*margin*/) { text += quoted(value); }

    void add(PropertyList::UID value, std::size_t /*margin*/) {
        text += "<UID " + number(value.value) + '>';
    }

    // NOLINTNEXTLINE(misc-no-recursion)
    void add(const PropertyList::Array& values, std::size_t margin) {
        text += '(';
        for (std::size_t index = 0; index < values.size(); ++index) {
            text += index == 0 ? "\n" : ",\n";
            text.append(margin + indentation, ' ');
            write(values[index], margin + indentation);
        }
        end(margin, ')');
    }

    // NOLINTNEXTLINE(misc-no-recursion)
    void add(const PropertyList::Dictionary& values, std::size_t margin) {
        text += '{';
        for (const auto& [key, value] : values) {
            text += '\n';
            text.append(margin + indentation, ' ');
            text += quoted(key) + " = ";
            write(value, margin + indentation);
            text += ';';
        }
        end(margin, '}');
    }

    void end(std::size_t margin, char bracket) {
        text += '\n';
        text.append(margin, ' ');
        text += bracket;
    }
};

} // namespace

std::string valueText(const PropertyList& value) {
    if (const auto* const text = value.get<std::string>())
        return *text;
    if (const auto* const real = value.get<double>())
        return number(*real);
    Writer writer;
    writer.write(value, 0);
    return std::move(writer.text);
}

} // namespace Defaults
