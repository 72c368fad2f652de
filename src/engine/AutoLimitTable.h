#pragma once

#include <array>
#include <chrono>

#include "platform/runtime/Date.h"

// The yearly depreciation limits of passenger automobiles (IRC section 280F(a)), in dollars at 100% business use, as the IRS
// publishes them each year (Rev. Proc. for the year; IRS Publication 463). Years of recovery 1, 2, 3, and 4 for the fourth and
// every later one.
namespace tallymar {

struct AutoLimitRow {
    int LastYear, LastMonth, LastDay;  // the last day in service that the row holds for
    std::array<int, 4> Limits;
};

// A limit of 0 is no limit: automobiles from before 1987 are not held to one here. COMPAT: vehicles of all later years take the
// last row, which is that of 2000 to 2003, unless the company goes by the law of the year (law/Law.h).
inline constexpr auto kAutoLimits = std::to_array<AutoLimitRow>({
    {1984, 6, 17, {0, 0, 0, 0}},
    {1984, 12, 31, {0, 0, 0, 0}},
    {1985, 4, 1, {0, 0, 0, 0}},
    {1986, 12, 31, {0, 0, 0, 0}},
    {1987, 12, 31, {2560, 4100, 2450, 1475}},
    {1988, 12, 31, {2560, 4100, 2450, 1475}},
    {1989, 12, 31, {2660, 4200, 2550, 1475}},
    {1990, 12, 31, {2660, 4200, 2550, 1475}},
    {1991, 12, 31, {2660, 4300, 2550, 1575}},
    {1992, 12, 31, {2760, 4400, 2650, 1575}},
    {1993, 12, 31, {2860, 4600, 2750, 1675}},
    {1994, 12, 31, {2960, 4700, 2850, 1675}},
    {1995, 12, 31, {3060, 4900, 2950, 1775}},
    {1996, 12, 31, {3060, 4900, 2950, 1775}},
    {1997, 12, 31, {3160, 5000, 3050, 1775}},
    {1998, 12, 31, {3160, 5000, 2950, 1775}},
    {1999, 12, 31, {3060, 5000, 2950, 1775}},
    {2000, 12, 31, {3060, 4900, 2950, 1775}},
    {2001, 12, 31, {3060, 4900, 2950, 1775}},
    {2002, 12, 31, {3060, 4900, 2950, 1775}},
    {2003, 12, 31, {3060, 4900, 2950, 1775}},
    {2004, 12, 31, {3060, 4900, 2950, 1775}},
    {2005, 12, 31, {3060, 4900, 2950, 1775}},
    {2006, 12, 31, {3060, 4900, 2950, 1775}},
    {2007, 12, 31, {3060, 4900, 2950, 1775}},
    {9999, 12, 31, {3060, 4900, 2950, 1775}},
});

// The first-year limit that came with the additional depreciation of the Job Creation and Worker Assistance Act of 2002. COMPAT:
// for every automobile since then, with or without it.
inline constexpr int kFirstYearLimitWithAdditional = 7660;

// The first moment after the row's last day, as a date serial.
constexpr double EndOfRow(const AutoLimitRow& row) {
    using std::chrono::sys_days;
    constexpr sys_days kEpoch = std::chrono::year(1899) / 12 / 30;
    const sys_days last = std::chrono::year(row.LastYear) / row.LastMonth / row.LastDay;
    return static_cast<double>((last - kEpoch).count()) + 1.0;
}

// The row that a day in service falls in.
const AutoLimitRow& AutoLimitsFor(Date inService);

}  // namespace tallymar
