#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "reports/ReportColumns.h"
#include "reports/Section179Warning.h"

namespace tallymar {

// The lines printed when a group ends.
enum class SubtotalBlock {
    ThreePasses,           // gross, less disposed, net
    ThreePassesUnlabelled,  // the same, only the net line with a label
    Short                  // one line
};

// Where the closing block of a report with one line of totals gives its blank row.
enum class ClosingGap { None, BeforeLastGroup, AfterLastGroup };

// All that a report of the family says of itself. What it does not say is the same for every one of them.
struct ReportShape {
    std::vector<ColumnTable> Tables;  // declared one after the other; a later row of the same index takes the earlier one's place
    int FirstAmount = 0;              // the summed columns that are seen
    int LastAmount = 0;
    SubtotalBlock Block = SubtotalBlock::ThreePasses;
    std::string_view DisposedLabelInLoop = "Less Disposed";  // of the second pass, while assets follow
    float TotalLabelColumn = 9;                              // of "Report Total"
    ClosingGap Gap = ClosingGap::None;                       // of Short blocks

    FilterMode Filter = FilterMode::InService;
    // The assets that the report is about at all: tested before the selection, and after it.
    bool (*Considers)(const CellSource&) = nullptr;
    bool (*Prints)(const CellSource&) = nullptr;
    // The second description, or the blank line, is printed only for assets that the filter on the date sold would select too.
    bool SecondLineByDateSold = false;

    bool IdentifiedByFederal = false;  // type, method, life and convention are book 1's
    bool Projects = false;             // the years to come are computed before the cells are filled
    bool Notes = false;                // the marks are explained under the report
    const WarningTable* Warnings = nullptr;
    CurrencyAmount (*WarnedAmount)(const ReportWriter&, const WarningRow&) = nullptr;

    bool HasShadows() const { return Block != SubtotalBlock::Short; }
    int Amounts() const { return LastAmount - FirstAmount + 1; }
};

}  // namespace tallymar
