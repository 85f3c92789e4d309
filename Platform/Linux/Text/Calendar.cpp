#include "Platform/Calendar.h"

#include "Platform/Mutex.h"

#include <sys/stat.h>
#include <unicode/gregocal.h>
#include <unicode/timezone.h>

#include <cstdlib>
#include <string>

namespace Platform {
namespace {

using Calculator = std::unique_ptr<icu::Calendar>;

/// What the time zone comes from: while it stays the same, so does the zone.
struct ZoneSource {
    static ZoneSource current() {
        ZoneSource source;
        if (const char* const variable = std::getenv("TZ"))
            source.variable = variable;
        struct stat status{};
        if (lstat("/etc/localtime", &status) == 0) {
            source.file = status.st_ino;
            source.modified = status.st_mtim.tv_sec;
        }
        return source;
    }

    friend bool operator==(const ZoneSource&, const ZoneSource&) = default;

    std::optional<std::string> variable;
    ino_t file = 0;
    time_t modified = 0;
};

Calculator makeCalculator() {
    UErrorCode status = U_ZERO_ERROR;
    auto calculator = std::make_unique<icu::GregorianCalendar>(icu::TimeZone::detectHostTimeZone(),
                                                               icu::Locale::getRoot(), status);
    return U_SUCCESS(status) ? std::move(calculator) : nullptr;
}

} // namespace

class Calendar::Impl {
public:
    /// For one calculation by one thread. Null where ICU's data is missing.
    Calculator calculator() {
        auto source = ZoneSource::current();
        const MutexLock lock(mutex_);
        if (!prototype_ || source != source_) {
            source_ = std::move(source);
            prototype_ = makeCalculator();
        }
        return Calculator(prototype_ ? prototype_->clone() : nullptr);
    }

private:
    Mutex mutex_;
    ZoneSource source_ CORBEL_GUARDED_BY(mutex_);
    Calculator prototype_ CORBEL_GUARDED_BY(mutex_);
};

Calendar::Calendar()
    : impl_(std::make_unique<Impl>()) {}

Calendar::~Calendar() = default;

DateComponents Calendar::componentsOf(std::chrono::sys_seconds time) const {
    const auto calculator = impl_->calculator();
    if (!calculator)
        return {};
    UErrorCode status = U_ZERO_ERROR;
    calculator->setTime(static_cast<UDate>(time.time_since_epoch().count()) * U_MILLIS_PER_SECOND,
                        status);
    const auto field = [&](UCalendarDateFields name) { return calculator->get(name, status); };
    return {.year = field(UCAL_EXTENDED_YEAR),
            .month = field(UCAL_MONTH) + 1,
            .day = field(UCAL_DAY_OF_MONTH),
            .hour = field(UCAL_HOUR_OF_DAY),
            .minute = field(UCAL_MINUTE),
            .second = field(UCAL_SECOND),
            .weekday = field(UCAL_DAY_OF_WEEK)};
}

} // namespace Platform
