#include "Platform/Calendar.h"

#import <Foundation/Foundation.h>

namespace Platform {

class Calendar::Impl {
public:
    /// For one calculation by one thread.
    static NSCalendar* calculator() {
        NSCalendar* const calendar =
            [NSCalendar calendarWithIdentifier:NSCalendarIdentifierGregorian];
        calendar.timeZone = NSTimeZone.localTimeZone; // which follows the user's
        return calendar;
    }
};

Calendar::Calendar()
    : impl_(std::make_unique<Impl>()) {}

Calendar::~Calendar() = default;

DateComponents Calendar::componentsOf(std::chrono::sys_seconds time) const {
    @autoreleasepool {
        constexpr NSCalendarUnit units = NSCalendarUnitEra | NSCalendarUnitYear |
                                         NSCalendarUnitMonth | NSCalendarUnitDay |
                                         NSCalendarUnitHour | NSCalendarUnitMinute |
                                         NSCalendarUnitSecond | NSCalendarUnitWeekday;
        const auto seconds = static_cast<NSTimeInterval>(time.time_since_epoch().count());
        NSDateComponents* const shown =
            [Impl::calculator() components:units
                                  fromDate:[NSDate dateWithTimeIntervalSince1970:seconds]];
        const auto portable = [](NSInteger field) { return static_cast<int>(field); };
        return {.year = portable(shown.era == 0 ? 1 - shown.year : shown.year),
                .month = portable(shown.month),
                .day = portable(shown.day),
                .hour = portable(shown.hour),
                .minute = portable(shown.minute),
                .second = portable(shown.second),
                .weekday = portable(shown.weekday)};
    }
}

} // namespace Platform
