#include "platform/runtime/Clock.h"

#include <cmath>

namespace tallymar {

Clock ClockOf(Date date) {
    constexpr int kSecondsPerDay = 86400;
    constexpr double kLastDay = 2958465.0;  // 9999-12-31
    double day = std::trunc(date.Serial());
    int seconds = static_cast<int>(std::round(std::fabs(date.Serial() - day) * kSecondsPerDay));
    if (seconds == kSecondsPerDay) {
        if (day < kLastDay) {
            day += 1;
            seconds = 0;
        } else {
            --seconds;
        }
    }
    const Date whole = Date::FromSerial(day);
    return {.Year = whole.Year(),
            .Month = whole.Month(),
            .Day = whole.Day(),
            .DayOfYear = whole.DayOfYear(),
            .Weekday = whole.Weekday(),
            .Hour = seconds / 3600,
            .Minute = seconds / 60 % 60,
            .Second = seconds % 60,
            .IsEpochDay = day == 0.0};
}

Date AtTime(Date day, int hour, int minute, int second) {
    const double time = (hour * 3600.0 + minute * 60.0 + second) / 86400.0;
    return day.AddDays(day.Serial() < 0 ? -time : time);
}

}  // namespace tallymar
