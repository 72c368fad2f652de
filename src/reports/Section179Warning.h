#pragma once

#include <span>
#include <string>

#include "platform/runtime/CurrencyAmount.h"

namespace tallymar {

// One limit of Section 179 expense, for report years from FirstYear to LastYear. COMPAT: ranges overlap. A year whose limit is
// not exceeded is tested against the rows that follow as well, and its report can then warn of an earlier, lower limit.
struct WarningRow {
    int FirstYear;
    int LastYear;
    int Limit;       // whole dollars
    int Column = 0;  // whose total is tested; 0: the expense of the assets in their first year
};

using WarningTable = std::span<const WarningRow>;

inline constexpr int kAnyEarlierYear = 0;
inline constexpr int kAnyLaterYear = 9999;

// "*** WARNING - Current Year 179 Expense EXCEEDS $5,000 ***"
std::string WarningText(int limit);
// By law, of a tax year that the law's tables have no row for.
std::string UnknownLimitText(int taxYear);

}  // namespace tallymar
