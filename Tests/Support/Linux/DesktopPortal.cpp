#include "Tests/Support/Linux/DesktopPortal.h"

#include "Tests/Support/Linux/BusService.h"

#include <utility>

namespace TestSupport {
namespace {

constexpr auto description = R"(<node><interface name="org.freedesktop.portal.Settings">
  <method name="Read">
    <arg direction="in" type="s"/><arg direction="in" type="s"/><arg direction="out" type="v"/>
  </method>
</interface></node>)";

std::string askedFor(GDBusMethodInvocation* call) {
    const char* key = nullptr;
    g_variant_get(g_dbus_method_invocation_get_parameters(call), "(&s&s)", nullptr, &key);
    return key;
}

} // namespace

DesktopPortal::DesktopPortal(const std::string& busAddress, std::string monospaceFont)
    : monospaceFont_(std::move(monospaceFont))
    , service_(std::make_unique<BusService>(
          busAddress, "org.freedesktop.portal.Desktop",
          BusService::Object{.path = "/org/freedesktop/portal/desktop",
                             .interface = "org.freedesktop.portal.Settings",
                             .description = description},
          [this](GDBusMethodInvocation* call) {
              auto* const setting = askedFor(call) == "monospace-font-name"
                                        ? g_variant_new_string(monospaceFont_.c_str())
                                        : g_variant_new_uint32(scheme_);
              auto* const value = g_variant_new_variant(setting);
              g_dbus_method_invocation_return_value(call, g_variant_new("(v)", value));
          })) {}

DesktopPortal::~DesktopPortal() = default;

void DesktopPortal::setColorScheme(std::uint32_t scheme) {
    scheme_ = scheme;
    service_->emit("SettingChanged", g_variant_new("(ssv)", "org.freedesktop.appearance",
                                                   "color-scheme", g_variant_new_uint32(scheme)));
}

} // namespace TestSupport
