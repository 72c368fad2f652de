#pragma once

#include <compare>
#include <string>

namespace tallymar {

// A moment as days from 1899-12-30 in a double, the fraction being the time of day. Day 0 stands for "no date" in memory.
// Calendar arithmetic is the proleptic Gregorian calendar's, for the years 100 to 9999.
class Date {
 public:
    constexpr Date() = default;
    static constexpr Date FromSerial(double days) {
        Date date;
        date.days_ = days;
        return date;
    }
    // Fails with Failure::InvalidCall when the calendar has no such day or the year is outside 100 to 9999.
    static Date FromYmd(int year, int month, int day);
    static bool IsCalendarDay(int year, int month, int day);

    constexpr double Serial() const { return days_; }
    constexpr bool IsNone() const { return days_ == 0.0; }

    // Parts of the day that the date lies in. Outside the calendar's years: Failure::Overflow.
    int Year() const;
    int Month() const;
    int Day() const;
    int DayOfYear() const;  // 1 to 366
    int Weekday() const;    // 1 Sunday to 7 Saturday

    // The same month and day so many years on. A February 29 that the year does not have fails with Failure::InvalidCall and a
    // text that says so.
    Date AddYears(int years) const;
    // The same, but where the year has no February 29 it is the 28th: how a posting moves its dates on.
    Date AddYearsWithinMonth(int years) const;
    Date AddDays(double days) const { return FromSerial(days_ + days); }

    friend constexpr auto operator<=>(Date, Date) = default;

 private:
    Date OnDay(int year, int month, int day) const;  // that day at this time of day

    double days_ = 0.0;
};

// Today's local date, without a time; Now has the time of day.
Date Today();
Date Now();

}  // namespace tallymar
