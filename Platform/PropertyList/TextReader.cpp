#include "Platform/PropertyList/TextReader.h"

#include "Platform/PropertyList/TextEncodings.h"
#include "Platform/PropertyList/TextScanner.h"
#include "Platform/UTF8.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Platform::PropertyLists {

namespace {

enum class Container : std::uint8_t {
    array,
    dictionary,
    table, ///< a dictionary that ends with the text
};

class TextReader {
public:
    TextReader(std::string_view text, Receiver& receiver, std::size_t depth)
        : scanner_(text)
        , receiver_(receiver)
        , depth_(depth) {}

    bool read() {
        if (!root())
            return false;
        while (!containers_.empty()) {
            if (!advance())
                return false;
        }
        return scanner_.atEnd();
    }

    bool mightReadMore() { return read() || scanner_.isCutOff(); }

private:
    bool root() {
        auto text = scanner_.string();
        if (!text)
            return value();
        if (scanner_.atEnd())
            return receiver_.wholeText(TextKind::string, *text);
        return open(Container::table) && entry(text);
    }

    bool advance() {
        if (std::exchange(isBehindValue_, false) && !endsValue())
            return close();
        switch (containers_.back()) {
        case Container::array:
            return scanner_.take(')') ? closeArray() : value();
        case Container::dictionary:
            return scanner_.take('}') ? closeDictionary() : entry(scanner_.string());
        case Container::table:
            return scanner_.atEnd() ? closeDictionary() : entry(scanner_.string());
        }
        return false;
    }

    /// Every entry of a dictionary ends with a semicolon; in an array the last may go without.
    bool endsValue() { return scanner_.take(containers_.back() == Container::array ? ',' : ';'); }

    bool close() {
        return containers_.back() == Container::array && scanner_.take(')') && closeArray();
    }

    bool closeArray() {
        containers_.pop_back();
        isBehindValue_ = true;
        return receiver_.endArray();
    }

    bool closeDictionary() {
        containers_.pop_back();
        isBehindValue_ = true;
        return receiver_.endDictionary();
    }

    bool entry(const std::optional<std::string>& key) {
        if (!key || !receiver_.wholeText(TextKind::key, *key))
            return false;
        if (scanner_.take('='))
            return value();
        isBehindValue_ = true;
        return receiver_.wholeText(TextKind::string, *key);
    }

    bool value() {
        if (scanner_.take('{'))
            return open(Container::dictionary);
        if (scanner_.take('('))
            return open(Container::array);
        isBehindValue_ = true;
        const bool isData = scanner_.take('<');
        const auto content = isData ? scanner_.data() : scanner_.string();
        return content && receiver_.wholeText(isData ? TextKind::data : TextKind::string, *content);
    }

    bool open(Container container) {
        if (containers_.size() >= depth_)
            return false;
        containers_.push_back(container);
        return container == Container::array ? receiver_.beginArray() : receiver_.beginDictionary();
    }

    TextScanner scanner_;
    Receiver& receiver_;
    std::size_t depth_;
    std::vector<Container> containers_;
    bool isBehindValue_ = false;
};

/// Less a character of UTF-8 that may be cut off.
std::string_view withoutLastCharacter(std::string_view bytes) {
    constexpr std::size_t longest = 4;
    for (std::size_t length = 1; length <= std::min(longest, bytes.size()); ++length) {
        const auto byte = static_cast<unsigned char>(bytes[bytes.size() - length]);
        if ((byte & 0xC0U) != 0x80U)
            return bytes.substr(0, bytes.size() - length);
    }
    return bytes;
}

} // namespace

bool mayBeginText(std::string_view bytes, Receiver& receiver, std::size_t depth) {
    if (bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE"))
        return true; // too seldom to be worth the trouble
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    bytes = withoutLastCharacter(bytes);
    return UTF8::isWellFormed(bytes) && TextReader(bytes, receiver, depth).mightReadMore();
}

bool readText(std::string_view bytes, Receiver& receiver, std::size_t depth) {
    const auto readUTF16 = [&](ByteOrder order) {
        const auto units = bytes.substr(2);
        return units.size() % 2 == 0 && TextReader(fromUTF16(units, order), receiver, depth).read();
    };
    if (bytes.starts_with("\xFE\xFF"))
        return readUTF16(ByteOrder::big);
    if (bytes.starts_with("\xFF\xFE"))
        return readUTF16(ByteOrder::little);
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    return UTF8::isWellFormed(bytes) && TextReader(bytes, receiver, depth).read();
}

} // namespace Platform::PropertyLists
