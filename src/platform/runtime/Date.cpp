#include "platform/runtime/Date.h"

#include <chrono>
#include <cmath>
#include <ctime>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr sys_days kEpoch = std::chrono::year(1899) / 12 / 30;
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

sys_days DayOf(double serial) {
    constexpr double kFirst = static_cast<double>((sys_days(std::chrono::year(kFirstYear) / 1 / 1) - kEpoch).count());
    constexpr double kLast = static_cast<double>((sys_days(std::chrono::year(kLastYear) / 12 / 31) - kEpoch).count());
    // Before the epoch the fraction still counts forward within the day, away from zero: -1.25 is the 29th at six.
    const double whole = std::trunc(serial);
    if (!(whole >= kFirst && whole <= kLast)) throw PlatformError(Failure::Overflow);
    return kEpoch + days(static_cast<int>(whole));
}

year_month_day YmdOf(double serial) {
    return year_month_day(DayOf(serial));
}

std::tm LocalNow() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return local;
}

Date DayOf(const std::tm& local) {
    return Date::FromYmd(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
}

}  // namespace

bool Date::IsCalendarDay(int year, int month, int day) {
    if (year < kFirstYear || year > kLastYear || month < 1 || month > 12 || day < 1) return false;
    return (std::chrono::year(year) / month / day).ok();
}

Date Date::FromYmd(int year, int month, int day) {
    if (!IsCalendarDay(year, month, day)) {
        throw PlatformError(Failure::InvalidCall, "There is no day " + std::to_string(month) + "/" + std::to_string(day) + "/" +
                                                      std::to_string(year) + " in the calendar");
    }
    return FromSerial(static_cast<double>((sys_days(std::chrono::year(year) / month / day) - kEpoch).count()));
}

int Date::Year() const {
    return static_cast<int>(YmdOf(days_).year());
}

int Date::Month() const {
    return static_cast<int>(static_cast<unsigned>(YmdOf(days_).month()));
}

int Date::Day() const {
    return static_cast<int>(static_cast<unsigned>(YmdOf(days_).day()));
}

int Date::DayOfYear() const {
    const sys_days day = DayOf(days_);
    return static_cast<int>((day - sys_days(year_month_day(day).year() / 1 / 1)).count()) + 1;
}

int Date::Weekday() const {
    return static_cast<int>(std::chrono::weekday(DayOf(days_)).c_encoding()) + 1;
}

Date Date::OnDay(int year, int month, int day) const {
    const double timeOfDay = std::fabs(days_ - std::trunc(days_));
    const Date moved = FromYmd(year, month, day);
    return FromSerial(moved.days_ < 0 ? moved.days_ - timeOfDay : moved.days_ + timeOfDay);
}

Date Date::AddYears(int years) const {
    return OnDay(Year() + years, Month(), Day());
}

Date Date::AddYearsWithinMonth(int years) const {
    const int year = Year() + years;
    const bool leapDayMissing = Month() == 2 && Day() == 29 && !IsCalendarDay(year, 2, 29);
    return OnDay(year, Month(), leapDayMissing ? 28 : Day());
}

Date Today() {
    return DayOf(LocalNow());
}

Date Now() {
    const std::tm local = LocalNow();
    const double seconds = local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec;
    return DayOf(local).AddDays(seconds / 86400.0);
}

}  // namespace tallymar
