#include "Platform/PropertyList.h"
#include "Tests/Platform/PropertyListSamples.h"
#include "Tests/Support/Testing.h"

namespace {

using namespace PropertyListSamples;
using Platform::PropertyList;

std::optional<PropertyList> readFile(const std::filesystem::path& path) {
    return read(TestSupport::contentOf(path));
}

// The peer is the `plistlib` of Python: it reads what was written here and writes it again, and it
// writes lists of its own in both forms.
TEST(PropertyListDifferential, AgreesWithAnotherImplementationInBothDirections) {
    constexpr int rounds = 300;
    const TestSupport::TemporaryFolder folder;
    const auto numbered = [&](const char* name, int number, const char* suffix = "") {
        return folder / (name + std::to_string(number) + suffix);
    };
    std::mt19937 random(5);
    std::vector<PropertyList> values;
    for (int round = 0; round < rounds; ++round) {
        const auto format =
            round % 2 == 0 ? PropertyList::Format::xml : PropertyList::Format::binary;
        values.push_back(randomValue(random, format));
        TestSupport::writeFile(numbered("ours", round), text(*values.back().write(format)));
    }
    const auto command = "python3 '" CORBEL_TEST_DATA "/PropertyListPeer.py' '" +
                         folder.path().string() + "' " + std::to_string(rounds);
    ASSERT_EQ(std::system(command.c_str()), 0);
    for (int round = 0; round < rounds; ++round) {
        EXPECT_EQ(readFile(numbered("back", round)), values[static_cast<std::size_t>(round)]);
        const auto theirs = readFile(numbered("theirs", round, ".xml"));
        EXPECT_TRUE(theirs);
        EXPECT_EQ(theirs, readFile(numbered("theirs", round, ".binary")));
    }
}

} // namespace
