#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "reports/ReportWriter.h"
#include "store/AssetRecord.h"

namespace tallymar {

// The current depreciation of the year reported and of the years projected after it; 0 is unused, 5 is computed and printed
// nowhere.
struct FourYears {
    std::array<CurrencyAmount, 6> Curr{};
    std::array<CurrencyAmount, 6> Prev{};
    std::array<std::int16_t, 6> Thru{};
};

// What a cell's value is taken from: the asset of the detail line and what the report has worked out for it.
struct CellSource {
    const AssetRecord& Asset;  // as stored
    int Book;                  // reported
    int IdBook;                // whose type, method, life and convention identify the asset
    bool Include179;
    Date Now;  // for the days owned of what is unsold
    const ReportWriter& Writer;

    int Years = 0;  // ordinal of the fiscal year of the year end, 1 being the asset's first; 0 before it
    bool IsDisposed = false;
    FourYears Projected = {};
    // Set by the marks printed; either brings the notes under the report.
    bool HasAdditional = false;
    bool HasExpense = false;

    CurrencyAmount Amount(int column) const { return std::get<CurrencyAmount>(Writer.Columns(column).Value); }
};

// One row of a report's table of columns. A heading may hold, in braces, a date picture for the year end, with days added after
// a
// "+" ("FYE {mm/dd/yy}", "{yyyy+365}"), or {book} for the book compared with.
struct ColumnRow {
    int Index;
    int Start;
    int Width;
    Justify Just;
    bool Sum;
    std::string_view Fmt;
    std::string_view Head1;
    std::string_view Head2;
    Cell (*Value)(CellSource&);
};

// Places of the amounts in the fixed asset and property tax registers.
enum RegisterAmount : int { kCost = 11, kExpense, kPrevious, kCurrent, kBookValue };

using ColumnTable = std::span<const ColumnRow>;

std::string ExpandHeading(std::string_view heading, Date yearEnd, int book);

// Whom the asset is: number to convention, columns 1 to 10 of the registers. A report repeats the rows that it has otherwise.
extern const ColumnTable kIdentificationColumns;
// The same of the two reports with narrow amounts, columns 1 to 8.
extern const ColumnTable kNarrowIdentificationColumns;

// Values of cells that several reports have.
namespace cells {

Cell AssetNumber(CellSource& source);
Cell Description(CellSource& source);
Cell InService(CellSource& source);
Cell DisposalStatus(CellSource& source);  // what became of it, from the disposal
Cell FlagStatus(CellSource& source);      // whatever is marked first, disposed or not
Cell BusinessUse(CellSource& source);
Cell Percent(CellSource& source);  // declining balance, blank for an asset expensed whole
Cell Convention(CellSource& source);
Cell MarkedConvention(CellSource& source);  // with " (A)" or " (E)" for first-year amounts
Cell Basis(CellSource& source);
Cell Section179(CellSource& source);
Cell PrevDepr(CellSource& source);
Cell CurrDepr(CellSource& source);
Cell FirstYearAddition(CellSource& source);       // additional first-year depreciation once the asset is in service
Cell PrevDeprWith179(CellSource& source);         // of earlier years, their expense added when that is included
Cell PrevDeprWith179AndAddl(CellSource& source);  // the same with the additional first-year depreciation
Cell CurrDeprWith179(CellSource& source);         // of this year, first-year amounts added when expense is included
Cell NetBookValue(CellSource& source);            // of the amounts of the registers

}  // namespace cells

}  // namespace tallymar
