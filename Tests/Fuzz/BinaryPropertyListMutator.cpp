// Inputs for the fuzzer of property lists that keep the structure of a binary list: its objects are
// taken apart, one thing about them is changed, and the table of offsets and the trailer are made
// anew. Mutating bytes alone hardly ever yields a list whose references lead anywhere.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maximum);

namespace {

constexpr std::size_t trailerSize = 32;

std::string bigEndian(std::uint64_t value, std::size_t size) {
    std::string bytes(size, '\0');
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte, value >>= 8)
        *byte = static_cast<char>(value);
    return bytes;
}

std::uint64_t number(const std::string& bytes) {
    std::uint64_t value = 0;
    for (const char byte : bytes)
        value = value << 8 | static_cast<unsigned char>(byte);
    return value;
}

struct BinaryList {
    std::size_t referenceSize = 1;
    std::size_t offsetSize = 2;
    std::uint64_t top = 0;
    std::vector<std::string> objects; ///< the bytes of each

    bool take(const std::string& bytes) {
        if (!bytes.starts_with("bplist") || bytes.size() < 8 + trailerSize)
            return false;
        const auto trailer = bytes.substr(bytes.size() - trailerSize);
        offsetSize = static_cast<unsigned char>(trailer[6]);
        referenceSize = static_cast<unsigned char>(trailer[7]);
        const auto count = number(trailer.substr(8, 8));
        top = number(trailer.substr(16, 8));
        const auto table = number(trailer.substr(24, 8));
        if (offsetSize == 0 || offsetSize > 8 || referenceSize == 0 || referenceSize > 8 ||
            table > bytes.size() || count > (bytes.size() - table) / offsetSize)
            return false;
        std::vector<std::uint64_t> starts;
        for (std::uint64_t i = 0; i < count; ++i)
            starts.push_back(number(bytes.substr(table + i * offsetSize, offsetSize)));
        auto ends = starts;
        ends.push_back(table);
        std::ranges::sort(ends);
        for (const auto start : starts) {
            const auto end = std::ranges::upper_bound(ends, start);
            objects.push_back(start < table && end != ends.end() ? bytes.substr(start, *end - start)
                                                                 : std::string());
        }
        return !objects.empty();
    }

    std::string bytes() const {
        std::string text = "bplist00";
        std::string table;
        for (const auto& object : objects) {
            table += bigEndian(text.size(), offsetSize);
            text += object;
        }
        const auto start = text.size();
        text += table + std::string(6, '\0') + static_cast<char>(offsetSize) +
                static_cast<char>(referenceSize);
        return text + bigEndian(objects.size(), 8) + bigEndian(top, 8) + bigEndian(start, 8);
    }
};

class Mutation {
public:
    Mutation(BinaryList& list, unsigned seed)
        : list_(list)
        , random_(seed) {}

    void run() {
        auto& object = list_.objects[below(list_.objects.size())];
        const std::function<void()> mutations[] = {
            [&] { // any bytes of one object
                object.resize(object.size() + 8);
                object.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(object.data()),
                                               object.size() - 8, object.size()));
            },
            [&] { list_.objects.push_back(std::string(object)); },
            [&] { list_.objects.push_back(anyObject()); },
            [&] { object = anyObject(); },
            [&] { // a reference in a container, perhaps
                if (object.size() > list_.referenceSize)
                    object.replace(1 + below(object.size() - list_.referenceSize),
                                   list_.referenceSize, reference());
            },
            [&] { std::swap(object, list_.objects[below(list_.objects.size())]); },
            [&] { list_.top = below(list_.objects.size() + 1); },
            [&] { list_.offsetSize = 1 + below(8); },
            [&] { list_.referenceSize = 1 + below(below(4) == 0 ? 8 : 2); },
        };
        mutations[below(std::size(mutations))]();
    }

    std::size_t below(std::size_t limit) { return random_() % limit; }

private:
    std::string reference() {
        return bigEndian(below(list_.objects.size() + 2), list_.referenceSize);
    }

    // Of any kind, with a count within the first byte or behind it.
    std::string anyObject() {
        static const std::string kinds("\x00\x10\x20\x30\x40\x50\x60\x80\xA0\xB0\xC0\xD0", 12);
        const auto kind = static_cast<unsigned char>(kinds[below(kinds.size())]);
        const auto count = below(below(4) == 0 ? 40 : 5);
        std::string object(1, static_cast<char>(kind | std::min<std::size_t>(count, 15)));
        if (count >= 15 && kind >= 0x40)
            object += '\x10' + bigEndian(count, 1);
        for (std::size_t i = 0; i < count; ++i) {
            if (kind >= 0xA0) {
                object += reference() + (kind == 0xD0 ? reference() : "");
            } else {
                object += static_cast<char>(random_());
            }
        }
        return kind < 0x40 ? object + std::string(16, static_cast<char>(below(2))) : object;
    }

    BinaryList& list_;
    std::minstd_rand random_;
};

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maximum, unsigned seed) {
    BinaryList list;
    const std::string before(data, data + size);
    const bool isList = list.take(before);
    if (seed % 3 == 0 || (!isList && seed % 16 != 1))
        return LLVMFuzzerMutate(data, size, maximum);
    if (!isList)
        list = {.objects = {"\xD1\x01\x02", "\x55Label", "\x51x"}};
    Mutation mutation(list, seed);
    for (auto count = 1 + mutation.below(4); count > 0; --count)
        mutation.run();
    const auto after = list.bytes();
    if (after.size() > maximum)
        return LLVMFuzzerMutate(data, size, maximum);
    std::memcpy(data, after.data(), after.size());
    return after.size();
}
