#include "Platform/PropertyList.h"

#include "Platform/PropertyList/BinaryReader.h"
#include "Platform/PropertyList/BinaryWriter.h"
#include "Platform/PropertyList/Form.h"
#include "Platform/PropertyList/TextReader.h"
#include "Platform/PropertyList/TreeBuilder.h"
#include "Platform/PropertyList/Walk.h"
#include "Platform/PropertyList/XMLReader.h"
#include "Platform/PropertyList/XMLWriter.h"

namespace Platform {

namespace {

bool readForm(PropertyLists::Form form, std::string_view bytes, PropertyLists::Receiver& receiver,
              std::size_t depth) {
    switch (form.format) {
    case PropertyList::Format::xml: {
        PropertyLists::XMLReader reader(receiver, depth);
        return reader.append(bytes.substr(form.begin)) && reader.finish();
    }
    case PropertyList::Format::binary:
        return PropertyLists::readBinary(bytes, receiver, depth);
    case PropertyList::Format::text:
        return PropertyLists::readText(bytes, receiver, depth);
    }
    return false;
}

std::vector<std::byte> bytesOf(const std::string& text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

} // namespace

const PropertyList* PropertyList::find(std::string_view key) const {
    const auto* const entries = get<Dictionary>();
    if (entries == nullptr)
        return nullptr;
    const auto found = entries->find(key);
    return found == entries->end() ? nullptr : &found->second;
}

std::optional<PropertyList> PropertyList::read(std::span<const std::byte> bytes) {
    return read(bytes, Limits());
}

std::optional<PropertyList> PropertyList::read(std::span<const std::byte> bytes, Limits limits) {
    const auto content = PropertyLists::characters(bytes);
    const auto form = PropertyLists::formOf(content, true);
    PropertyLists::TreeBuilder builder(limits.cost);
    if (!form || !readForm(*form, content, builder, limits.depth))
        return std::nullopt;
    return builder.takeResult();
}

std::optional<std::vector<std::byte>> PropertyList::write(Format format) const {
    if (format == Format::xml) {
        PropertyLists::XMLWriter writer;
        if (PropertyLists::walk(*this, writer))
            return bytesOf(writer.takeDocument());
    } else if (format == Format::binary) {
        PropertyLists::BinaryWriter writer;
        if (PropertyLists::walk(*this, writer))
            return bytesOf(writer.takeList());
    }
    return std::nullopt;
}

} // namespace Platform
