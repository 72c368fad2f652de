#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/Date.h"

// The small computations that every subsystem shares.
namespace tallymar {

// Rounds to the cent, halves toward plus infinity (2.005 is 2.01, -2.005 is -2.00); then, only if roundFlag is exactly "Y", to
// the dollar in the same way. Callers pass the text of the company's Round column, which reads "True" or "False": so amounts keep
// their cents.
void RoundAmount(CurrencyAmount& amount, std::string_view roundFlag);

// value / 100.
CurrencyAmount PercentOf(CurrencyAmount value);

// The date that the text holds, date 0 when it holds none.
Date TextToDate(std::string_view text);

struct YearMonthCount {
    std::int16_t Years = 0;   // ordinal of the fiscal year, the one that contains the from date being 1
    std::int16_t Months = 0;  // ordinal month of the fiscal year in which the from date lies, 1 to 12
};

// Counts fiscal years that end in the to date's month; the days of the two dates play no part. Both counts are 0 when the from
// date's year is after the to date's.
YearMonthCount YearsAndMonths(Date from, Date to);

// 0 if the from date's year is after the to date's; else the difference in days, ties to even.
std::int32_t DaysBetween(Date from, Date to);

// Takes a state code off the end of a city line ("DENVER CO"), trailing blanks aside: the state comes out in upper case, the city
// keeps its case. Without a code at the end both stay as they are.
void SplitCityState(std::string& city, std::string& state);

// first / second, ties to even. Overflow fails with Failure::Overflow.
std::int16_t ScaledInteger(float first, float second);

// What new asset numbers are to begin with is of the letters A to Z and digits; else Failure::InvalidCall.
void RequireNumberPrefix(std::string_view prefix);

constexpr std::string_view CheckMark(bool set) {
    return set ? "X" : " ";
}

}  // namespace tallymar
