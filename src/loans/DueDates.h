#pragma once

#include <optional>
#include <string_view>

#include "platform/runtime/Date.h"

namespace tallymar {

// A day on which a payment is due.
//
// COMPAT: February has 29 days in every year that divides by 4, 2100 too.
struct DueDate {
    int Year = 0;
    int Month = 0;
    int Day = 0;

    // February 29 of a year that has none is the 28th. Failure::Overflow past the year 9999.
    Date AsDate() const;
};

// Month, day and year, separated by "/", "-", "." or blanks; a first number of four digits is the year ("2003-01-31"). nullopt
// when the text holds anything else, or a day that its month does not have.
//
// COMPAT: of the years in two digits those below 21 are 20xx, those from 21 on 19xx; "1/1/25" is 1925.
std::optional<DueDate> ReadDueDate(std::string_view text);

int DaysFromTo(const DueDate& from, const DueDate& to);

// The due dates of a loan, one after the other from the first. Where the year's periods are whole months the day of the month
// stays, or is the month's last where that is sooner. 24 a year: the first one's day, the 15th day after it, and so on. 26 a
// year and the others: the nearest number of days, 14 for 26, 7 for 52.
class DueDates {
 public:
    DueDates(const DueDate& first, int perYear) : first_(first), current_(first), perYear_(perYear) {}

    const DueDate& Current() const { return current_; }
    void MoveNext();

 private:
    DueDate first_;
    DueDate current_;
    int perYear_;
    int moves_ = 0;
};

}  // namespace tallymar
