#include "Platform/Linux/Bus/BusAddress.h"

#include <systemd/sd-bus.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace Platform {
namespace {

constexpr auto wellKnownSystemBus = "unix:path=/var/run/dbus/system_bus_socket";

bool isPlain(char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z') ||
           std::string_view("-_/\\*.").find(character) != std::string_view::npos;
}

std::string escaped(const std::string& path) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char character : path) {
        const auto byte = static_cast<unsigned char>(character);
        if (isPlain(character)) {
            text += character;
        } else {
            text += {'%', digits[byte / 16], digits[byte % 16]};
        }
    }
    return text;
}

} // namespace

std::string sessionBusAddress() {
    const char* const address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    if (address != nullptr && *address != '\0')
        return address;
    const char* const folder = std::getenv("XDG_RUNTIME_DIR");
    if (folder == nullptr)
        return {};
    const auto socket = std::filesystem::path(folder) / "bus";
    std::error_code ignored;
    return std::filesystem::is_socket(socket, ignored) ? "unix:path=" + escaped(socket.string())
                                                       : "";
}

std::string systemBusAddress() {
    const char* const address = std::getenv("DBUS_SYSTEM_BUS_ADDRESS");
    return address != nullptr ? address : wellKnownSystemBus;
}

std::vector<std::string> busPlaces(std::string_view address) {
    std::vector<std::string> places;
    if (address.find('\0') != std::string_view::npos)
        return places;
    while (!address.empty()) {
        const auto place = address.substr(0, address.find(';'));
        if (place.starts_with("unix:"))
            places.emplace_back(place);
        address.remove_prefix(std::min(place.size() + 1, address.size()));
    }
    return places;
}

bool isServiceName(const std::string& name) {
    return name.find('\0') == std::string::npos && !name.starts_with(':') &&
           sd_bus_service_name_is_valid(name.c_str()) > 0;
}

} // namespace Platform
