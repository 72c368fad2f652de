#pragma once

#include <string>

#include "platform/runtime/Date.h"
#include "reports/ReportOptions.h"
#include "store/AssetRecord.h"

namespace tallymar {

// Which date of an asset the date filter compares.
enum class FilterMode { InService, DateSold };

// The one definition of what belongs in a report. The filter dates are 0 where the user entered none.
struct ReportFilter {
    ReportOptions Options;
    Date YearEnd;  // of the book reported
    Date FilterFrom;
    Date FilterTo;

    bool SelectFilter(const AssetRecord& asset, FilterMode mode) const;
};

// The year, in four digits, in which the fiscal year that contains the asset's in-service date begins.
std::string FiscalYearKey(Date inService, Date yearEnd);

// The group that the asset belongs to in the chosen sequence.
std::string SubtotalKey(const AssetRecord& asset, const ReportOptions& options, Date yearEnd);

}  // namespace tallymar
