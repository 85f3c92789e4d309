#pragma once

#include "Platform/PropertyList.h"

#include <chrono>
#include <memory>
#include <optional>

namespace Platform {

/// A moment as a calendar and a clock show it. A plain value.
struct DateComponents {
    int year = 0;    ///< 0 is the year before 1, which history calls 1 BC
    int month = 1;   ///< 1 to 12
    int day = 1;     ///< 1 to 31
    int hour = 0;    ///< 0 to 23
    int minute = 0;  ///< 0 to 59
    int second = 0;  ///< 0 to 59
    int weekday = 0; ///< 1, Sunday, to 7
};

/// The Gregorian calendar, in which the Julian one's 4 October 1582 is followed by the 15th, with
/// the clock of the time zone that the user has when a question is asked. Callable on any thread.
class Calendar {
public:
    /// A moment in time, the same in all time zones.
    using Date = PropertyList::Date;

    /// The one that all share.
    static const Calendar& gregorian();

    Calendar();
    ~Calendar();
    Calendar(const Calendar&) = delete;
    Calendar& operator=(const Calendar&) = delete;
    Calendar(Calendar&&) = delete;
    Calendar& operator=(Calendar&&) = delete;

    /// Fractions of a second are dropped. Absent for a date that is no number, or some million
    /// years away.
    std::optional<DateComponents> dateComponents(Date date) const;

private:
    DateComponents componentsOf(std::chrono::sys_seconds time) const;

    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace Platform
