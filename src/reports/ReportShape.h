#pragma once

#include <array>
#include <string_view>

#include "reports/ReportColumns.h"
#include "reports/ReportSelection.h"
#include "reports/Section179Warning.h"

namespace tallymar {

// The lines printed when a group ends.
enum class SubtotalBlock {
    ThreePasses,            // gross, less disposed, net: over shadow columns
    ThreePassesUnlabelled,  // the same, but only the net line has a label
    Short                   // one line; disposed assets are in it like any other
};

// Where a report with Short blocks leaves a row blank before its total.
enum class ClosingGap { None, BeforeLastGroup, AfterLastGroup };

// All that a report of the family says of itself. What it does not say is the same for every one of them.
struct ReportShape {
    std::array<ColumnTable, 2> Tables;  // the second one's rows take the place of the first one's with the same index
    int FirstAmount = 0;                // the summed columns that are seen; ThreePasses lays two ranges of shadows after them
    int LastAmount = 0;

    SubtotalBlock Block = SubtotalBlock::ThreePasses;
    std::string_view LessDisposed = "Less Disposed";  // the second pass of a group that others follow
    float TotalLabelColumn = 9;
    ClosingGap Gap = ClosingGap::None;

    FilterMode Filter = FilterMode::InService;
    // What the report is about at all: tested before the selection, and after it. None: every asset.
    bool (*Considers)(const CellSource&) = nullptr;
    bool (*Lists)(const CellSource&) = nullptr;
    // The second description or the blank line comes only after an asset that the selection by date sold takes as well.
    bool SecondLineByDateSold = false;

    bool IdentifiedByFederal = false;  // type, method, life and convention are those of book 1
    bool Projects = false;             // the years to come are computed for each asset
    bool MarkNotes = false;            // the marks of the conventions are explained under the report
    WarningTable Warnings = {};        // of too much Section 179 expense, under the report
};

}  // namespace tallymar
