#include "Platform/Calendar.h"

#include "Platform/NeverDestroyed.h"

#include <cmath>

namespace Platform {
namespace {

// Within what the systems' calendars can count, with room to spare.
constexpr int mostYears = 1'000'000;
constexpr double mostSeconds = mostYears * 31'557'600.0;

bool isWithin(int value, int first, int last) {
    return value >= first && value <= last;
}

bool hasPlausibleFields(const DateComponents& components) {
    return isWithin(components.year, -mostYears, mostYears) && isWithin(components.month, 1, 12) &&
           isWithin(components.day, 1, 31) && isWithin(components.hour, 0, 23) &&
           isWithin(components.minute, 0, 59) && isWithin(components.second, 0, 59);
}

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

// The systems take 30 February for 2 March: it is no date when it is shown otherwise than asked.
std::optional<Calendar::Date> Calendar::date(const DateComponents& components) const {
    const auto time = hasPlausibleFields(components) ? timeOf(components) : std::nullopt;
    if (!time)
        return std::nullopt;
    auto shown = componentsOf(*time);
    shown.weekday = components.weekday;
    return shown == components ? std::optional<Date>(*time) : std::nullopt;
}

} // namespace Platform
