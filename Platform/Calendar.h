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
    int weekday = 0; ///< 1, Sunday, to 7; not read where components make a date

    friend bool operator==(const DateComponents&, const DateComponents&) = default;
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

    /// Absent for what no calendar or clock ever shows, such as 30 February, or a time that is
    /// skipped when daylight saving begins. Where two dates show the same, as when it ends, it is
    /// one of them.
    std::optional<Date> date(const DateComponents& components) const;

private:
    DateComponents componentsOf(std::chrono::sys_seconds time) const;

    /// Of components that nothing shows, any time or none.
    std::optional<std::chrono::sys_seconds> timeOf(const DateComponents& components) const;

    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace Platform
