#include "Platform/Linux/Notifications/NotificationMessage.h"

#include "Platform/Bundle.h"

#include <string>
#include <string_view>

namespace Platform {
namespace {

constexpr guchar normalUrgency = 1;
constexpr gint32 lifetimeOfTheServicesChoice = -1;

// The bus disconnects whoever sends it anything else.
std::string validText(const std::string& bytes) {
    return GStringPtr(g_utf8_make_valid(bytes.data(), static_cast<gssize>(bytes.size()))).get();
}

std::string escapeMarkup(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

std::string bodyOf(const NotificationContent& content, const NotificationCapabilities& service) {
    std::string body = validText(content.subtitle);
    if (!body.empty() && !content.body.empty())
        body += '\n';
    body += validText(content.body);
    return service.bodyMarkup ? escapeMarkup(body) : body;
}

GVariant* actionList(const std::vector<NotificationAction>& actions,
                     const NotificationCapabilities& service) {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("as"));
    if (service.actions) {
        g_variant_builder_add(&list, "s", defaultActionKey);
        g_variant_builder_add(&list, "s", "");
        for (const auto& action : actions) {
            g_variant_builder_add(&list, "s", validText(action.identifier).c_str());
            g_variant_builder_add(&list, "s", validText(action.title).c_str());
        }
    }
    return g_variant_builder_end(&list);
}

GVariant* hints() {
    GVariantBuilder table;
    g_variant_builder_init(&table, G_VARIANT_TYPE("a{sv}"));
    g_variant_builder_add(
        &table, "{sv}", "desktop-entry",
        g_variant_new_string(validText(Bundle::main().text("CFBundleIdentifier")).c_str()));
    g_variant_builder_add(&table, "{sv}", "category", g_variant_new_string("x-tarnwell.job"));
    g_variant_builder_add(&table, "{sv}", "urgency", g_variant_new_byte(normalUrgency));
    return g_variant_builder_end(&table);
}

} // namespace

NotificationCapabilities NotificationCapabilities::read(GVariant* answer) {
    const GVariantPtr list(g_variant_get_child_value(answer, 0));
    NotificationCapabilities capabilities;
    for (gsize index = 0; index < g_variant_n_children(list.get()); ++index) {
        const GVariantPtr item(g_variant_get_child_value(list.get(), index));
        const std::string_view name = g_variant_get_string(item.get(), nullptr);
        capabilities.actions |= name == "actions";
        capabilities.bodyMarkup |= name == "body-markup";
    }
    return capabilities;
}

GVariantPtr makeNotifyArguments(const NotificationRequest& request,
                                const std::vector<NotificationAction>& actions,
                                const NotificationCapabilities& capabilities,
                                std::uint32_t replaced) {
    const auto noIcon = "";
    return takeVariant(
        g_variant_new("(susss@as@a{sv}i)", validText(Bundle::main().text("CFBundleName")).c_str(),
                      replaced, noIcon, validText(request.content.title).c_str(),
                      bodyOf(request.content, capabilities).c_str(),
                      actionList(actions, capabilities), hints(), lifetimeOfTheServicesChoice));
}

} // namespace Platform
