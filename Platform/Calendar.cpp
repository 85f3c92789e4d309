#include "Platform/Calendar.h"

#include "Platform/NeverDestroyed.h"

#include <cmath>

namespace Platform {
namespace {

// Within what the systems' calendars can count, with room to spare.
constexpr double mostSeconds = 1'000'000 * 31'557'600.0;

} // namespace

const Calendar& Calendar::gregorian() {
    static const NeverDestroyed<Calendar> calendar;
    return calendar.get();
}

std::optional<DateComponents> Calendar::dateComponents(Date date) const {
    const auto seconds = date.time_since_epoch().count();
    if (!(std::abs(seconds) <= mostSeconds)) // nor is what is no number
        return std::nullopt;
    return componentsOf(std::chrono::floor<std::chrono::seconds>(date));
}

} // namespace Platform
