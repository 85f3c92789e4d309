#include "Platform/PropertyList.h"

#include "Platform/PropertyList/BinaryReader.h"
#include "Platform/PropertyList/BinaryWriter.h"
#include "Platform/PropertyList/Form.h"
#include "Platform/PropertyList/TextReader.h"
#include "Platform/PropertyList/Toll.h"
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

/// The writer's whole result, unless the value does not get through to it.
template <class Writer>
Expected<std::vector<std::byte>> written(const PropertyList& list, PropertyList::Limits limits,
                                         std::string (Writer::*take)()) {
    Error tooMuch{"The value is larger or deeper than what can be read again."};
    Writer writer;
    PropertyLists::Toll toll(writer, limits);
    if (!PropertyLists::walk(list, toll)) {
        return toll.isExceeded() ? tooMuch
                                 : Error{"The property-list format cannot hold the value."};
    }
    const auto result = (writer.*take)();
    if (result.size() > PropertyList::largestOwnFile)
        return tooMuch;
    const auto bytes = std::as_bytes(std::span(result));
    return std::vector(bytes.begin(), bytes.end());
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

Expected<std::vector<std::byte>> PropertyList::write(Format format, Limits limits) const {
    using PropertyLists::BinaryWriter;
    using PropertyLists::XMLWriter;
    switch (format) {
    case Format::xml:
        return written(*this, limits, &XMLWriter::takeDocument);
    case Format::binary:
        return written(*this, limits, &BinaryWriter::takeList);
    case Format::text:
        break;
    }
    return Error{"The old-style form is only read."};
}

} // namespace Platform
