#include "Platform/Linux/Notifications/NotificationMessage.h"

#include "Platform/Bundle.h"
#include "Platform/Linux/Bus/BusWriter.h"
#include "Platform/Linux/Loops/GStringPtr.h"

#include <string>
#include <string_view>
#include <utility>

namespace Platform {
namespace {

constexpr std::uint8_t normalUrgency = 1;
constexpr std::int32_t lifetimeOfTheServicesChoice = -1;

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

// A category that is not the standard's own begins with "x-" and its vendor's name; that is the
// second part of an identifier such as "com.example.Program".
std::string categoryHint(const std::string& category) {
    const auto identifier = Bundle::main().text("CFBundleIdentifier");
    const auto vendor = identifier.substr(identifier.find('.') + 1);
    return "x-" + validText(vendor.substr(0, vendor.find('.')) + "." + category);
}

/// Keys and titles, one after the other.
std::vector<std::string> actionList(const std::vector<NotificationAction>& actions,
                                    const NotificationCapabilities& service) {
    if (!service.actions)
        return {};
    std::vector<std::string> list = {defaultActionKey, ""};
    for (const auto& action : actions) {
        list.push_back(validText(action.identifier));
        list.push_back(validText(action.title));
    }
    return list;
}

/// All the texts of a call.
struct Message {
    std::string application = validText(Bundle::main().text("CFBundleName"));
    /// Its name in the desktop's icon theme; empty: none.
    std::string icon = validText(Bundle::main().text("CFBundleIconFile"));
    std::string title;
    std::string body;
    std::vector<std::string> actions;
    std::string desktopEntry = validText(Bundle::main().text("CFBundleIdentifier"));
    std::string category; ///< empty: none
};

void writeHints(const Message& message, BusWriter& writer) {
    writer.array("{sv}", [&] {
        writer.entry("desktop-entry", "s", [&] { writer.add(message.desktopEntry); });
        if (!message.category.empty())
            writer.entry("category", "s", [&] { writer.add(message.category); });
        writer.entry("urgency", "y", [&] { writer.add(normalUrgency); });
    });
}

} // namespace

NotificationCapabilities NotificationCapabilities::read(const PropertyList::Array& answer) {
    NotificationCapabilities capabilities;
    for (const auto& name : *answer[0].get<PropertyList::Array>()) {
        capabilities.actions |= name == PropertyList(std::string("actions"));
        capabilities.bodyMarkup |= name == PropertyList(std::string("body-markup"));
    }
    return capabilities;
}

BusArguments makeNotifyArguments(const NotificationRequest& request,
                                 const std::vector<NotificationAction>& actions,
                                 const NotificationCapabilities& capabilities,
                                 std::uint32_t replaced) {
    const auto& category = request.content.categoryIdentifier;
    Message message{.title = validText(request.content.title),
                    .body = bodyOf(request.content, capabilities),
                    .actions = actionList(actions, capabilities),
                    .category = category.empty() ? "" : categoryHint(category)};
    return [message = std::move(message), replaced](BusWriter& writer) {
        writer.add(message.application).add(replaced).add(message.icon).add(message.title);
        writer.add(message.body).array("s", [&] {
            for (const auto& text : message.actions)
                writer.add(text);
        });
        writeHints(message, writer);
        writer.add(lifetimeOfTheServicesChoice);
    };
}

} // namespace Platform
