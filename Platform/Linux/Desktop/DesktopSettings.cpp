#include "Platform/Linux/Desktop/DesktopSettings.h"

#include "Platform/Linux/Bus/BusWriter.h"

#include <utility>

namespace Platform {
namespace {

constexpr auto portal = "org.freedesktop.portal.Desktop";
constexpr auto portalPath = "/org/freedesktop/portal/desktop";
constexpr auto settings = "org.freedesktop.portal.Settings";

} // namespace

DesktopSettings::DesktopSettings(BusClock::duration patience)
    : deadline_(busDeadlineIn(patience))
    , bus_(SharedBus::session().connectAndWait(deadline_)) {}

std::optional<PropertyList> DesktopSettings::read(const std::string& group,
                                                  const std::string& key) {
    if (!bus_)
        return std::nullopt;
    auto reply = bus_->callAndWait({.destination = portal,
                                    .path = portalPath,
                                    .interface = settings,
                                    .name = "Read", // every version has it; "ReadOne" is new
                                    .replyType = "v",
                                    .mayStart = true},
                                   busArguments(group, key), deadline_);
    if (reply.outcome != BusReply::Outcome::answered)
        return std::nullopt;
    return std::move(reply.values[0]);
}

std::unique_ptr<BusSubscription> DesktopSettings::observe(const std::string& group, std::string key,
                                                          Observer observer) {
    if (!bus_)
        return nullptr;
    return bus_->subscribe({.sender = portal,
                            .path = portalPath,
                            .interface = settings,
                            .name = "SettingChanged",
                            .firstArgument = group},
                           DispatchQueue::main(),
                           [key = PropertyList(std::move(key)),
                            observer = std::move(observer)](const BusSignal& signal) {
                               if (signal.type == "ssv" && signal.values[1] == key)
                                   observer(signal.values[2]);
                           });
}

} // namespace Platform
