#include "Platform/Linux/Helper/HelperReply.h"

#include "Platform/Linux/Helper/BusValues.h"
#include "Platform/PrintableText.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace Platform {
namespace {

using Kind = ConnectionError::Kind;

std::string_view orEmpty(const char* text) {
    return text == nullptr ? std::string_view() : std::string_view(text);
}

// The bus itself says so when there is nobody to answer; a helper's own errors of these names are
// refusals like any other.
bool meansThatNobodyIsThere(GDBusMessage* message, std::string_view name) {
    constexpr std::array<std::string_view, 5> names = {
        "org.freedesktop.DBus.Error.NoReply", "org.freedesktop.DBus.Error.ServiceUnknown",
        "org.freedesktop.DBus.Error.NameHasNoOwner", "org.freedesktop.DBus.Error.TimedOut",
        "org.freedesktop.DBus.Error.Disconnected"};
    return orEmpty(g_dbus_message_get_sender(message)) == "org.freedesktop.DBus" &&
           (std::ranges::find(names, name) != names.end() ||
            name.starts_with("org.freedesktop.DBus.Error.Spawn."));
}

std::string wordsOf(GDBusMessage* message) {
    const auto words = orEmpty(g_dbus_message_get_arg0(message));
    return printableText(words.empty() ? orEmpty(g_dbus_message_get_error_name(message)) : words,
                         ActingCharacters::spaced);
}

ConnectionError badReply(const char* description) {
    return {.kind = Kind::badReply, .description = description};
}

ConnectionReply readValue(GVariant* values) {
    const auto count = values == nullptr ? 0 : g_variant_n_children(values);
    if (count == 0)
        return PropertyList();
    if (count > 1)
        return badReply("an answer of several values");
    auto value = valueFromBus(GVariantPtr(g_variant_get_child_value(values, 0)).get());
    if (!value)
        return badReply("an answer without a meaning as a value");
    return std::move(*value);
}

} // namespace

ConnectionReply readHelperReply(GDBusMessage* message) {
    if (g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_ERROR)
        return readValue(g_dbus_message_get_body(message));
    const auto name = orEmpty(g_dbus_message_get_error_name(message));
    return ConnectionError{.kind = meansThatNobodyIsThere(message, name) ? Kind::interrupted
                                                                         : Kind::refused,
                           .description = wordsOf(message)};
}

} // namespace Platform
