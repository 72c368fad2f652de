#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/runtime/CurrencyAmount.h"

namespace tallymar {

// One limit of Section 179 expense, for report years from FirstYear to LastYear. Ranges overlap: a year whose limit is not exceeded is
// tested against the rows that follow as well, and its report then warns of an earlier, lower limit.
struct WarningRow {
    int FirstYear;
    int LastYear;
    int Limit;              // whole dollars
    std::string_view Text;  // the limit as it is printed
    bool OfPrevious = false;
};

inline constexpr int kAnyLaterYear = 9999;

using WarningTable = std::span<const WarningRow>;

// The row whose years hold the year and whose limit the amount of that row exceeds, the first one; nullptr when there is none.
template <typename AmountOfRow>
const WarningRow* FindWarning(WarningTable table, int year, AmountOfRow&& amountOf) {
    for (const WarningRow& row : table) {
        if (year >= row.FirstYear && year <= row.LastYear && amountOf(row) > Units(row.Limit)) return &row;
    }
    return nullptr;
}

std::string WarningText(const WarningRow& row);

}  // namespace tallymar
