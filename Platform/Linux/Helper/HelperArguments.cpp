#include "Platform/Linux/Helper/HelperArguments.h"

#include "Platform/Linux/Bus/BusWriter.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <variant>

namespace Platform {
namespace {

/// The type of a value in a message. Null and UID have none: nobody sends them.
struct TypeOf {
    const char* operator()(bool) const { return "b"; }

    const char* operator()(std::int64_t) const { return "x"; }

    const char* operator()(std::uint64_t) const { return "t"; }

    const char* operator()(double) const { return "d"; }

    // A structure, so that a date is not taken for the number.
    const char* operator()(PropertyList::Date) const { return "(d)"; }

    const char* operator()(const PropertyList::Data&) const { return "ay"; }

    const char* operator()(const std::string&) const { return "s"; }

    const char* operator()(const PropertyList::Array&) const { return "av"; }

    const char* operator()(const PropertyList::Dictionary&) const { return "a{sv}"; }

    const char* operator()(PropertyList::Null) const { return ""; }

    const char* operator()(PropertyList::UID) const { return ""; }
};

const char* typeOf(const PropertyList& value) {
    return std::visit(TypeOf(), value.value());
}

void write(const PropertyList& value, BusWriter& writer);

struct Write {
    BusWriter& writer;

    template <class Scalar>
    void operator()(const Scalar& value) const {
        writer.add(value);
    }

    void operator()(PropertyList::Date value) const {
        writer.structure("d", [&] { writer.add(value.time_since_epoch().count()); });
    }

    void operator()(const PropertyList::Data& value) const { writer.add(std::span(value)); }

    void operator()(const PropertyList::Array& array) const {
        writer.array("v", [&] {
            for (const auto& element : array)
                writer.variant(typeOf(element), [&] { write(element, writer); });
        });
    }

    void operator()(const PropertyList::Dictionary& dictionary) const {
        writer.array("{sv}", [&] {
            for (const auto& [key, element] : dictionary)
                writer.entry(key, typeOf(element), [&] { write(element, writer); });
        });
    }

    void operator()(PropertyList::Null /*value*/) const {}

    void operator()(PropertyList::UID /*value*/) const {}
};

void write(const PropertyList& value, BusWriter& writer) {
    std::visit(Write{writer}, value.value());
}

} // namespace

BusArguments helperArguments(PropertyList::Array arguments) {
    return [shared = std::make_shared<const PropertyList::Array>(std::move(arguments))](
               BusWriter& writer) {
        for (const auto& argument : *shared)
            write(argument, writer);
    };
}

} // namespace Platform
