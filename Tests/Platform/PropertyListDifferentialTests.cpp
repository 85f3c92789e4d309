#include "Platform/PropertyList.h"
#include "Tests/Platform/PropertyListSamples.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace {

using namespace PropertyListSamples;
using Platform::PropertyList;

constexpr int rounds = 300;

std::string hex(std::string_view content) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string spelled;
    for (const char byte : content) {
        spelled += digits[static_cast<unsigned char>(byte) >> 4];
        spelled += digits[static_cast<unsigned char>(byte) & 0xFU];
    }
    return spelled;
}

std::string tagged(char tag, std::string_view content) {
    return std::string(1, tag).append(content);
}

/// One line that the peer spells in the same way.
struct Spelling {
    std::string operator()(PropertyList::Null /*value*/) const { return "null"; }

    std::string operator()(bool value) const { return value ? "true" : "false"; }

    std::string operator()(std::int64_t value) const { return tagged('i', std::to_string(value)); }

    std::string operator()(std::uint64_t value) const { return tagged('i', std::to_string(value)); }

    std::string operator()(double value) const {
        return tagged('r', std::to_string(std::bit_cast<std::uint64_t>(value)));
    }

    std::string operator()(PropertyList::Date value) const {
        const auto whole = std::chrono::floor<std::chrono::seconds>(value);
        return tagged('d', std::to_string(whole.time_since_epoch().count()));
    }

    std::string operator()(const PropertyList::Data& value) const {
        return tagged('b', hex(text(value)));
    }

    std::string operator()(const std::string& value) const { return tagged('s', hex(value)); }

    std::string operator()(PropertyList::UID value) const {
        return tagged('u', std::to_string(value.value));
    }

    std::string operator()(const PropertyList::Array& array) const {
        std::string spelled = "[";
        for (const auto& element : array)
            spelled += std::visit(*this, element.value()) + ",";
        return spelled + "]";
    }

    std::string operator()(const PropertyList::Dictionary& entries) const {
        std::string spelled = "{";
        for (const auto& [key, value] : entries)
            spelled += hex(key) + ":" + std::visit(*this, value.value()) + ",";
        return spelled + "}";
    }
};

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The peer is the `plistlib` of Python. It reads what was written here, and spells it; and it
/// writes lists of its own, and spells those.
TEST(PropertyListDifferential, AgreesWithAnotherImplementationInBothDirections) {
    const TestSupport::TemporaryFolder folder;
    std::mt19937 random(5);
    std::string spelled;
    for (int round = 0; round < rounds; ++round) {
        const auto format =
            round % 2 == 0 ? PropertyList::Format::xml : PropertyList::Format::binary;
        const auto value = randomValue(random, format);
        const auto written = value.write(format).value_or(std::vector<std::byte>());
        TestSupport::writeFile(folder / ("ours" + std::to_string(round)), text(written));
        spelled += std::visit(Spelling(), value.value()) + "\n";
    }
    const auto command = "python3 '" CORBEL_TEST_DATA "/PropertyListPeer.py' '" +
                         folder.path().string() + "' " + std::to_string(rounds);
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(contentOf(folder / "ours.spelled"), spelled);

    std::ifstream theirs(folder / "theirs.spelled");
    for (int round = 0; round < rounds; ++round) {
        std::string expected;
        ASSERT_TRUE(std::getline(theirs, expected));
        const auto value = read(contentOf(folder / ("theirs" + std::to_string(round))));
        EXPECT_EQ(std::visit(Spelling(), value.value_or(PropertyList()).value()), expected);
    }
}

} // namespace
