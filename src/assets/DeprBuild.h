#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/ADepre.h"
#include "platform/runtime/Date.h"
#include "platform/runtime/PerBook.h"
#include "store/AssetRecord.h"

namespace tallymar {

// One line of a build: a fiscal year, and per book the depreciation taken before it and that of the year.
struct DeprBuildRow {
    Date YearEnding;
    PerBook<CurrencyAmount> PrevDepr;
    PerBook<CurrencyAmount> CurrDepr;
};

// The year-by-year grid: two rows of headings, then one row a year.
class DeprBuildGrid {
 public:
    static constexpr int kColumns = 9;
    static constexpr int kFixedRows = 2;

    void Clear() { rows_.clear(); }
    void Store(Date yearEnding, const PerBook<CurrencyAmount>& currDepr, const PerBook<CurrencyAmount>& prevDepr);

    int BuildRow() const { return RowCount(); }  // the next free row
    int RowCount() const { return kFixedRows + static_cast<int>(rows_.size()); }
    const std::vector<DeprBuildRow>& Rows() const { return rows_; }
    // The text of a cell, headings included.
    std::string Cell(int row, int column) const;
    // The cells of a block as the clipboard takes them: tabs between columns, a line end after each row.
    std::string TabSeparated(int firstRow, int firstColumn, int lastRow, int lastColumn) const;

 private:
    std::vector<DeprBuildRow> rows_;
};

// Is the company's Federal year end one that a build can run to?
bool CanBuild(Date federalYearEnd);

// The first year end, of the month and day of the given one, on or after the day in service. Failure::InvalidCall when the year
// has no such day (a February 29).
Date FirstYearEnd(Date inService, Date yearEnd);

// Rebuilds an asset's depreciation from nothing: the engine runs once per year and book. COMPAT: all books run to the Federal
// year end, whatever theirs are. Leaves the last year's state in `record` and every year in `grid`. The caller has begun the
// engine's run. A failure of the engine reaches the caller, and `record` is as it was.
void BuildDepreciation(AssetRecord& record, Date federalYearEnd, ADepre& engine, DeprBuildGrid& grid);

}  // namespace tallymar
