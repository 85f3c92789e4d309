#include "Tests/Platform/PropertyListSamples.h"

#include <gtest/gtest.h>

#include <bit>

namespace PropertyListSamples {

using Platform::PropertyList;

namespace {

std::size_t below(std::mt19937& random, std::size_t end) {
    return std::uniform_int_distribution<std::size_t>(0, end - 1)(random);
}

std::string randomText(std::mt19937& random) {
    static const std::vector<std::string> pieces = {"a", "Z",      "0",          " ",   "\n",  "\r",
                                                    "<", "&",      "]]>",        "\"",  "\t",  "ä",
                                                    "€", "\u2028", "\U0001F600", "key", "\x7F"};
    std::string content;
    for (auto count = below(random, 20); count > 0; --count)
        content += pieces[below(random, pieces.size())];
    return content;
}

PropertyList randomInteger(std::mt19937& random) {
    const auto bits = std::uniform_int_distribution<std::uint64_t>()(random);
    const auto number = bits >> below(random, 64);
    if (number > INT64_MAX)
        return number;
    return (bits & 1) != 0 ? static_cast<std::int64_t>(number) : -static_cast<std::int64_t>(number);
}

PropertyList randomScalar(std::mt19937& random, PropertyList::Format format) {
    switch (below(random, format == PropertyList::Format::binary ? 7 : 6)) {
    case 0:
        return below(random, 2) == 0;
    case 1:
        return randomInteger(random);
    case 2: {
        const auto bits = std::uniform_int_distribution<std::uint64_t>()(random);
        const auto number = std::bit_cast<double>(bits);
        return number == number ? number : 0.1;
    }
    case 3:
        return PropertyList::Date(std::chrono::seconds(below(random, 8'000'000'000)));
    case 4: {
        PropertyList::Data data(below(random, 200));
        for (auto& byte : data)
            byte = static_cast<std::byte>(below(random, 256));
        return data;
    }
    case 5:
        return randomText(random);
    default:
        return PropertyList::UID{below(random, 1U << 20)};
    }
}

} // namespace

std::string repeated(std::string_view unit, std::size_t count) {
    std::string all;
    all.reserve(unit.size() * count);
    for (; count > 0; --count)
        all += unit;
    return all;
}

std::string utf16(std::string_view ascii, bool bigEndian) {
    std::string units;
    for (const char character : ascii)
        units += bigEndian ? std::string{'\0', character} : std::string{character, '\0'};
    return units;
}

std::string ascii(std::string_view text) {
    return static_cast<char>(0x50U | text.size()) + std::string(text);
}

std::string binary(const std::vector<std::string>& objects) {
    std::string list = "bplist00";
    std::string offsets;
    for (const auto& object : objects) {
        offsets += static_cast<char>(list.size());
        list += object;
    }
    EXPECT_LT(list.size(), 256U);
    const auto tableBegin = static_cast<char>(list.size());
    const auto number = [](char low) { return std::string(7, '\0') + low; };
    return list + offsets + std::string(6, '\0') + "\x01\x01" +
           number(static_cast<char>(objects.size())) + number(0) + number(tableBegin);
}

PropertyList randomValue(std::mt19937& random, PropertyList::Format format, int depth) {
    if (depth == 0 || below(random, 3) == 0)
        return randomScalar(random, format);
    auto count = below(random, 6);
    if (below(random, 2) == 0) {
        PropertyList::Array array;
        for (; count > 0; --count)
            array.push_back(randomValue(random, format, depth - 1));
        return array;
    }
    PropertyList::Dictionary entries;
    for (; count > 0; --count)
        entries.insert_or_assign(randomText(random), randomValue(random, format, depth - 1));
    return entries;
}

} // namespace PropertyListSamples
