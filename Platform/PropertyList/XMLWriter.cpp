#include "Platform/PropertyList/XMLWriter.h"

#include "Platform/Base64.h"
#include "Platform/PropertyList/XMLScalars.h"
#include "Platform/UTF8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace Platform::PropertyLists {

namespace {

constexpr std::string_view beginning = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                       "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                       "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                                       "<plist version=\"1.0\">\n";

std::string_view nameOf(TextKind kind) {
    switch (kind) {
    case TextKind::key:
        return "key";
    case TextKind::string:
        return "string";
    case TextKind::data:
        return "data";
    }
    return {};
}

/// XML has no character for most control characters, and none for the last two of the first plane.
bool isXMLText(std::string_view text) {
    const bool hasControls = std::ranges::any_of(text, [](char character) {
        return static_cast<unsigned char>(character) < ' ' && !isXMLSpace(character);
    });
    return !hasControls && UTF8::isWellFormed(text) &&
           text.find("\xEF\xBF\xBE") == std::string_view::npos &&
           text.find("\xEF\xBF\xBF") == std::string_view::npos;
}

} // namespace

XMLWriter::XMLWriter()
    : document_(beginning) {}

std::string XMLWriter::takeDocument() {
    return std::move(document_.append("</plist>\n"));
}

bool XMLWriter::beginDictionary() {
    return begin("dict");
}

bool XMLWriter::endDictionary() {
    return end("dict");
}

bool XMLWriter::beginArray() {
    return begin("array");
}

bool XMLWriter::endArray() {
    return end("array");
}

bool XMLWriter::begin(std::string_view name) {
    indent();
    document_.append("<").append(name).append(">\n");
    ++depth_;
    isEmpty_ = true;
    return true;
}

bool XMLWriter::end(std::string_view name) {
    --depth_;
    if (isEmpty_) {
        document_.resize(document_.size() - std::string_view(">\n").size());
        document_.append("/>\n");
    } else {
        indent();
        document_.append("</").append(name).append(">\n");
    }
    isEmpty_ = false;
    return true;
}

void XMLWriter::indent() {
    isEmpty_ = false;
    document_.append(depth_, '\t');
}

bool XMLWriter::element(std::string_view name, std::string_view content) {
    indent();
    document_.append("<").append(name).append(">").append(content);
    document_.append("</").append(name).append(">\n");
    return true;
}

bool XMLWriter::beginText(TextKind kind) {
    textKind_ = kind;
    indent();
    document_.append("<").append(nameOf(kind)).append(">");
    return true;
}

bool XMLWriter::text(std::string_view piece) {
    if (textKind_ != TextKind::data)
        return escaped(piece);
    data(piece);
    return true;
}

bool XMLWriter::endText() {
    document_.append("</").append(nameOf(textKind_)).append(">\n");
    return true;
}

bool XMLWriter::escaped(std::string_view text) {
    if (!isXMLText(text))
        return false;
    for (const char character : text) {
        switch (character) {
        case '&':
            document_.append("&amp;");
            break;
        case '<':
            document_.append("&lt;");
            break;
        case '>':
            document_.append("&gt;");
            break;
        case '\r': // which a reader takes for a line feed
            document_.append("&#13;");
            break;
        default:
            document_.push_back(character);
        }
    }
    return true;
}

void XMLWriter::data(std::string_view bytes) {
    constexpr std::size_t lineLength = 76;
    const auto encoded = base64EncodedString(bytes);
    document_.push_back('\n');
    for (std::size_t position = 0; position < encoded.size(); position += lineLength) {
        indent();
        document_.append(encoded, position, lineLength).push_back('\n');
    }
    indent();
}

bool XMLWriter::scalar(const Scalar& scalar) {
    return std::visit([this](const auto& value) { return write(value); }, scalar);
}

bool XMLWriter::write(bool value) {
    indent();
    document_.append(value ? "<true/>\n" : "<false/>\n");
    return true;
}

bool XMLWriter::write(std::int64_t value) {
    return element("integer", std::to_string(value));
}

bool XMLWriter::write(std::uint64_t value) {
    return element("integer", std::to_string(value));
}

bool XMLWriter::write(double value) {
    if (std::isnan(value))
        return element("real", "nan");
    if (std::isinf(value))
        return element("real", value > 0 ? "+infinity" : "-infinity");
    std::array<char, 32> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    return element("real", std::string_view(digits.data(), result.ptr));
}

bool XMLWriter::write(PropertyList::Date value) {
    const auto text = xmlFromDate(value);
    return text && element("date", *text);
}

} // namespace Platform::PropertyLists
