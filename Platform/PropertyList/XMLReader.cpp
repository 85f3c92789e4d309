#include "Platform/PropertyList/XMLReader.h"

#include "Platform/PropertyList/XMLScalars.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Platform::PropertyLists {

namespace {

constexpr std::size_t longestScalar = 512;
/// Expat keeps every name of an attribute that it meets. Only `version` is ever written.
constexpr std::size_t mostAttributeCharacters = std::size_t{64} * 1024;

} // namespace

struct XMLReader::Handlers {
    static XMLReader& reader(void* self) { return *static_cast<XMLReader*>(self); }

    static void start(void* self, const char* name, const char** attributes) noexcept {
        auto& it = reader(self);
        it.check(!it.failed_ && it.takesAttributes(attributes) && it.begin(elementNamed(name)));
    }

    static void end(void* self, const char*) noexcept {
        auto& it = reader(self);
        it.check(!it.failed_ && it.end());
    }

    static void text(void* self, const char* characters, int length) noexcept {
        auto& it = reader(self);
        const std::string_view piece(characters, static_cast<std::size_t>(length));
        it.check(!it.failed_ && it.characters(piece));
    }

    static void entity(void* self, const char*, int, const char*, int, const char*, const char*,
                       const char*, const char*) noexcept {
        reader(self).check(false);
    }

    static void skippedEntity(void* self, const char*, int) noexcept { reader(self).check(false); }

    static void attributeList(void* self, const char*, const char*, const char*, const char*,
                              int) noexcept {
        reader(self).check(false);
    }

    static void elementDeclaration(void* self, const char*, XML_Content* model) noexcept {
        auto& it = reader(self);
        XML_FreeContentModel(it.parser_.get(), model);
        it.check(false);
    }

    static void notation(void* self, const char*, const char*, const char*, const char*) noexcept {
        reader(self).check(false);
    }
};

XMLReader::XMLReader(Receiver& receiver, std::size_t depth)
    : receiver_(receiver)
    , depth_(depth) {
    auto* const parser = parser_.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, Handlers::start, Handlers::end);
    XML_SetCharacterDataHandler(parser, Handlers::text);
    XML_SetEntityDeclHandler(parser, Handlers::entity);
    XML_SetSkippedEntityHandler(parser, Handlers::skippedEntity);
    XML_SetAttlistDeclHandler(parser, Handlers::attributeList);
    XML_SetElementDeclHandler(parser, Handlers::elementDeclaration);
    XML_SetNotationDeclHandler(parser, Handlers::notation);
}

bool XMLReader::append(std::string_view bytes) {
    failed_ = failed_ || !parser_.append(bytes);
    return !failed_;
}

bool XMLReader::finish() {
    return !failed_ && parser_.finish() && hasRoot_ && !failed_;
}

XMLReader::Element XMLReader::elementNamed(std::string_view name) {
    static constexpr std::array<std::pair<std::string_view, Element>, 11> elements = {{
        {"string", Element::string},
        {"key", Element::key},
        {"dict", Element::dictionary},
        {"array", Element::array},
        {"true", Element::yes},
        {"false", Element::no},
        {"integer", Element::integer},
        {"real", Element::real},
        {"date", Element::date},
        {"data", Element::data},
        {"plist", Element::plist},
    }};
    // Met at every element: most differ in their first letter or their length.
    const auto* const found = std::ranges::find_if(elements, [&](const auto& element) {
        return element.first.front() == name.front() && element.first == name;
    });
    return found == elements.end() ? Element::unknown : found->second;
}

void XMLReader::check(bool good) {
    if (good || failed_)
        return;
    failed_ = true;
    XML_StopParser(parser_.get(), XML_FALSE);
}

bool XMLReader::takesAttributes(const char* const* attributes) {
    for (; *attributes != nullptr; attributes += 2)
        attributeCharacters_ += std::string_view(*attributes).size();
    return attributeCharacters_ <= mostAttributeCharacters;
}

bool XMLReader::begin(Element element) {
    if (leaf_ != Element::unknown)
        return false;
    switch (element) {
    case Element::unknown:
        return false;
    case Element::plist:
        return beginPlist();
    case Element::key:
        return takesKey() && beginLeaf(element);
    case Element::dictionary:
        return takesValue() && beginContainer(true);
    case Element::array:
        return takesValue() && beginContainer(false);
    default:
        return takesValue() && beginLeaf(element);
    }
}

bool XMLReader::beginPlist() {
    return containers_.empty() && !hasRoot_ && !std::exchange(hasPlist_, true);
}

bool XMLReader::beginContainer(bool isDictionary) {
    if (containers_.size() >= depth_)
        return false;
    containers_.push_back({isDictionary});
    return isDictionary ? receiver_.beginDictionary() : receiver_.beginArray();
}

bool XMLReader::beginLeaf(Element element) {
    leaf_ = element;
    collected_.clear();
    switch (element) {
    case Element::key:
        return receiver_.beginText(TextKind::key);
    case Element::string:
        return receiver_.beginText(TextKind::string);
    case Element::data:
        base64_ = {};
        return receiver_.beginText(TextKind::data);
    default:
        return true;
    }
}

bool XMLReader::takesKey() {
    return !containers_.empty() && containers_.back().isDictionary &&
           !std::exchange(containers_.back().hasKey, true);
}

bool XMLReader::takesValue() {
    if (containers_.empty())
        return !std::exchange(hasRoot_, true);
    return !containers_.back().isDictionary || std::exchange(containers_.back().hasKey, false);
}

bool XMLReader::characters(std::string_view piece) {
    switch (leaf_) {
    case Element::key:
    case Element::string:
        return receiver_.text(piece);
    case Element::data:
        return data(piece);
    case Element::integer:
    case Element::real:
    case Element::date:
        return collect(piece);
    default:
        return isXMLSpace(piece);
    }
}

bool XMLReader::data(std::string_view piece) {
    const auto decoded = base64_.append(piece);
    return decoded && (decoded->empty() || receiver_.text(*decoded));
}

bool XMLReader::collect(std::string_view piece) {
    while (collected_.empty() && !piece.empty() && isXMLSpace(piece.front()))
        piece.remove_prefix(1);
    collected_.append(piece);
    return collected_.size() <= longestScalar;
}

bool XMLReader::end() {
    if (leaf_ != Element::unknown)
        return endLeaf();
    if (containers_.empty()) // </plist>
        return hasRoot_;
    const auto container = containers_.back();
    containers_.pop_back();
    if (container.hasKey)
        return false;
    return container.isDictionary ? receiver_.endDictionary() : receiver_.endArray();
}

bool XMLReader::endLeaf() {
    while (!collected_.empty() && isXMLSpace(collected_.back()))
        collected_.pop_back();
    switch (std::exchange(leaf_, Element::unknown)) {
    case Element::data:
        return base64_.isComplete() && receiver_.endText();
    case Element::integer:
        return scalar(integerFromXML(collected_));
    case Element::real:
        return scalar(realFromXML(collected_));
    case Element::date:
        return scalar(dateFromXML(collected_));
    case Element::yes:
        return receiver_.scalar(true);
    case Element::no:
        return receiver_.scalar(false);
    default:
        return receiver_.endText();
    }
}

bool XMLReader::scalar(const std::optional<Scalar>& value) {
    return value && receiver_.scalar(*value);
}

} // namespace Platform::PropertyLists
