#pragma once

#include "platform/runtime/Date.h"

namespace tallymar {

// A date taken apart for printing, rounded to the second: what lies within half a second of midnight is the next day. (The last
// second of the calendar stays within it.)
struct Clock {
    int Year;
    int Month;
    int Day;
    int DayOfYear;
    int Weekday;  // 1 Sunday to 7 Saturday
    int Hour;
    int Minute;
    int Second;
    bool IsEpochDay;  // 1899-12-30, which a time without a date lies in

    bool IsMidnight() const { return Hour == 0 && Minute == 0 && Second == 0; }
};

// Fails with Failure::Overflow outside the calendar's years.
Clock ClockOf(Date date);

// The moment of a day and a time within it; before day 0 the time counts away from zero.
Date AtTime(Date day, int hour, int minute, int second);

}  // namespace tallymar
