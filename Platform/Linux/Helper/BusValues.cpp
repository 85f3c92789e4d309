#include "Platform/Linux/Helper/BusValues.h"

#include "Platform/PropertyList/Events.h"

#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Platform {
namespace {

// Values as GLib's makers return them, with a reference that nobody holds yet.

GVariant* floating(const PropertyList& value);

GVariant* floating(bool value) {
    return g_variant_new_boolean(value ? TRUE : FALSE);
}

GVariant* floating(std::int64_t value) {
    return g_variant_new_int64(value);
}

GVariant* floating(std::uint64_t value) {
    return g_variant_new_uint64(value);
}

GVariant* floating(double value) {
    return g_variant_new_double(value);
}

// A structure, so that a date is not taken for the number.
GVariant* floating(PropertyList::Date value) {
    return g_variant_new("(d)", value.time_since_epoch().count());
}

GVariant* floating(const PropertyList::Data& value) {
    return g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, value.data(), value.size(), 1);
}

GVariant* floating(const std::string& value) {
    return g_variant_new_string(value.c_str());
}

GVariant* floating(const PropertyList::Array& array) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE("av"));
    for (const auto& element : array)
        g_variant_builder_add(&builder, "v", floating(element));
    return g_variant_builder_end(&builder);
}

GVariant* floating(const PropertyList::Dictionary& dictionary) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
    for (const auto& [key, element] : dictionary)
        g_variant_builder_add(&builder, "{sv}", key.c_str(), floating(element));
    return g_variant_builder_end(&builder);
}

GVariant* floating(const PropertyList& value) {
    return std::visit(
        [](const auto& content) -> GVariant* {
            using Content = std::decay_t<decltype(content)>;
            if constexpr (std::is_same_v<Content, PropertyList::Null> ||
                          std::is_same_v<Content, PropertyList::UID>) {
                return g_variant_new("()"); // which nobody sends
            } else {
                return floating(content);
            }
        },
        value.value());
}

bool isOf(GVariant* value, const char* type) {
    return g_variant_is_of_type(value, G_VARIANT_TYPE(type)) != FALSE;
}

std::string_view textOf(GVariant* value) {
    gsize length = 0;
    const char* const text = g_variant_get_string(value, &length);
    return {text, length};
}

PropertyList wholeNumber(std::uint64_t value) {
    if (std::in_range<std::int64_t>(value))
        return static_cast<std::int64_t>(value);
    return value;
}

/// Reads one message's value. What it recurses on is at most so many containers deep.
class Reader {
public:
    using Result = std::optional<PropertyList>;

    Result read(GVariant* value) {
        if (!cost_.chargeValue())
            return std::nullopt;
        switch (g_variant_classify(value)) {
        case G_VARIANT_CLASS_BOOLEAN:
            return PropertyList(g_variant_get_boolean(value) != FALSE);
        case G_VARIANT_CLASS_BYTE:
            return wholeNumber(g_variant_get_byte(value));
        case G_VARIANT_CLASS_INT16:
            return PropertyList(std::int64_t{g_variant_get_int16(value)});
        case G_VARIANT_CLASS_UINT16:
            return wholeNumber(g_variant_get_uint16(value));
        case G_VARIANT_CLASS_INT32:
            return PropertyList(std::int64_t{g_variant_get_int32(value)});
        case G_VARIANT_CLASS_UINT32:
            return wholeNumber(g_variant_get_uint32(value));
        case G_VARIANT_CLASS_INT64:
            return PropertyList(std::int64_t{g_variant_get_int64(value)});
        case G_VARIANT_CLASS_UINT64:
            return wholeNumber(g_variant_get_uint64(value));
        case G_VARIANT_CLASS_DOUBLE:
            return PropertyList(g_variant_get_double(value));
        case G_VARIANT_CLASS_STRING:
        case G_VARIANT_CLASS_OBJECT_PATH:
        case G_VARIANT_CLASS_SIGNATURE:
            return text(value);
        default:
            return container(value);
        }
    }

private:
    Result text(GVariant* value) {
        const auto text = textOf(value);
        if (!cost_.charge(text.size()))
            return std::nullopt;
        return PropertyList(std::string(text));
    }

    Result container(GVariant* value) {
        constexpr unsigned deepest = 32;
        if (g_variant_is_container(value) == FALSE || depth_ == deepest)
            return std::nullopt;
        ++depth_;
        auto result = content(value);
        --depth_;
        return result;
    }

    Result content(GVariant* value) {
        if (isOf(value, "v"))
            return read(GVariantPtr(g_variant_get_variant(value)).get());
        if (isOf(value, "ay"))
            return data(value);
        if (isOf(value, "a{?*}"))
            return dictionary(value);
        if (isOf(value, "(d)"))
            return date(value);
        return array(value);
    }

    static Result date(GVariant* value) {
        double seconds = 0;
        g_variant_get(value, "(d)", &seconds);
        return PropertyList(PropertyList::Date(std::chrono::duration<double>(seconds)));
    }

    Result data(GVariant* value) {
        gsize size = 0;
        const auto* const bytes =
            static_cast<const std::byte*>(g_variant_get_fixed_array(value, &size, 1));
        if (!cost_.charge(size))
            return std::nullopt;
        return PropertyList(PropertyList::Data(bytes, bytes + size));
    }

    Result array(GVariant* value) {
        PropertyList::Array array;
        for (gsize index = 0; index < g_variant_n_children(value); ++index) {
            auto element = read(GVariantPtr(g_variant_get_child_value(value, index)).get());
            if (!element)
                return std::nullopt;
            array.push_back(std::move(*element));
        }
        return PropertyList(std::move(array));
    }

    Result dictionary(GVariant* value) {
        if (!isOf(value, "a{s*}") && !isOf(value, "a{o*}") && !isOf(value, "a{g*}"))
            return std::nullopt;
        PropertyList::Dictionary dictionary;
        for (gsize index = 0; index < g_variant_n_children(value); ++index) {
            const GVariantPtr entry(g_variant_get_child_value(value, index));
            const GVariantPtr key(g_variant_get_child_value(entry.get(), 0));
            auto element = read(GVariantPtr(g_variant_get_child_value(entry.get(), 1)).get());
            const auto name = textOf(key.get());
            if (!element || !cost_.chargeEntry() || !cost_.charge(name.size()))
                return std::nullopt;
            dictionary.insert_or_assign(std::string(name), std::move(*element));
        }
        return PropertyList(std::move(dictionary));
    }

    PropertyLists::Cost cost_{PropertyList::Limits().cost};
    unsigned depth_ = 0;
};

} // namespace

GVariantPtr busValue(const PropertyList& value) {
    return takeVariant(floating(value));
}

std::optional<PropertyList> valueFromBus(GVariant* value) {
    return Reader().read(value);
}

} // namespace Platform
