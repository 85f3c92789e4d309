#include "Platform/Calendar.h"
#include "Tests/Support/Testing.h"

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
        {-12219296008.0, "1582 10 15 0 0 0 6 "}, // by Berlin's local mean time
        {-12219296009.0, "1582 10 4 23 59 59 5 "},
        {-62200000000.0, "-2 12 19 15 6 48 5 "},
    };
    for (const auto& [seconds, shown] : cases)
        EXPECT_EQ(text(Calendar::gregorian().dateComponents(moment(seconds))), shown) << seconds;
}

TEST(Calendar, ShowsNoDateThatIsNone) {
    for (const double seconds : {std::numeric_limits<double>::quiet_NaN(),
                                 std::numeric_limits<double>::infinity(), -1e300})
        EXPECT_FALSE(Calendar::gregorian().dateComponents(moment(seconds))) << seconds;
}
