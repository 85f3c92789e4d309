#include "Platform/Calendar.h"
#include "Tests/Support/EnvironmentVariable.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>

using Platform::Calendar;
using Platform::DateComponents;
using TestSupport::EnvironmentVariable;

namespace {

Calendar::Date moment(double secondsSince1970) {
    return Calendar::Date(Calendar::Date::duration(secondsSince1970));
}

std::string text(const std::optional<DateComponents>& shown) {
    if (!shown)
        return "-";
    std::string result;
    for (const int field : {shown->year, shown->month, shown->day, shown->hour, shown->minute,
                            shown->second, shown->weekday})
        result += std::to_string(field) + ' ';
    return result;
}

} // namespace

TEST(Calendar, ShowsEachDateAsItsTimeZoneAndItsCenturyDid) {
    const EnvironmentVariable zone("TZ", "Europe/Berlin");
    const std::pair<double, const char*> cases[] = {
        {0, "1970 1 1 1 0 0 5 "},
        {-0.25, "1970 1 1 0 59 59 5 "},
        {1774745999.9, "2026 3 29 1 59 59 1 "}, // the last before daylight saving
        {1774746000, "2026 3 29 3 0 0 1 "},
        {1792889999, "2026 10 25 2 59 59 1 "}, // daylight saving's last
        {1792890000, "2026 10 25 2 0 0 1 "},
        {951782400, "2000 2 29 1 0 0 3 "},
        {-12219296008.0, "1582 10 15 0 0 0 6 "}, // by Berlin's local mean time
        {-12219296009.0, "1582 10 4 23 59 59 5 "},
    };
    for (const auto& [seconds, shown] : cases)
        EXPECT_EQ(text(Calendar::gregorian().dateComponents(moment(seconds))), shown) << seconds;
}

TEST(Calendar, FindsTheDateThatItShows) {
    const EnvironmentVariable zone("TZ", "Europe/Berlin");
    for (const double seconds :
         {0.0, 1774745999.0, 1774746000.0, 1792879200.0, -12219300000.0, -12219292800.0,
          -62135596800.0, -62200000000.0, -1e12, 253402300800.0, 3e13, -3e13}) {
        const auto shown = Calendar::gregorian().dateComponents(moment(seconds));
        ASSERT_TRUE(shown) << seconds;
        const auto found = Calendar::gregorian().date(*shown);
        ASSERT_TRUE(found) << seconds << ": " << text(shown);
        EXPECT_EQ(found->time_since_epoch().count(), seconds) << text(shown);
    }
}

TEST(Calendar, KnowsNoDateThatNothingShows) {
    const EnvironmentVariable zone("TZ", "Europe/Berlin");
    const DateComponents cases[] = {
        {.year = 2026, .month = 2, .day = 29},
        {.year = 1900, .month = 2, .day = 29},
        {.year = 2026, .month = 4, .day = 31},
        {.year = 1582, .month = 10, .day = 10},
        {.year = 2026, .month = 3, .day = 29, .hour = 2, .minute = 30}, // skipped
        {.year = 2026, .month = 0, .day = 1},
        {.year = 2026, .month = 1, .day = 0},
        {.year = 2026, .month = 1, .day = 1, .hour = 24},
        {.year = 2026, .month = 1, .day = 1, .hour = 0, .minute = -1},
        {.year = INT_MAX, .month = 1, .day = 1},
        {.year = 2026, .month = INT_MIN, .day = 1},
    };
    for (const auto& components : cases)
        EXPECT_FALSE(Calendar::gregorian().date(components)) << text(components);
    for (const double seconds : {std::numeric_limits<double>::quiet_NaN(),
                                 std::numeric_limits<double>::infinity(), -1e300})
        EXPECT_FALSE(Calendar::gregorian().dateComponents(moment(seconds))) << seconds;
    EXPECT_TRUE(Calendar::gregorian().date({.year = 1900, .month = 2, .day = 28, .weekday = 5}));
}
