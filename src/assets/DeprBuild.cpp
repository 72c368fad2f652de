#include "assets/DeprBuild.h"

#include <algorithm>

#include "platform/runtime/DateText.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"
#include "store/Books.h"

namespace tallymar {

namespace {

bool IsPreviousColumn(int column) {
    return column % 2 == 1;
}

std::string Heading(int row, int column) {
    if (row == 0) return column == 0 ? std::string() : std::string(BookOf((column + 1) / 2).ShortName);
    if (column == 0) return "Year Ending";
    return IsPreviousColumn(column) ? "Previous" : "Current";
}

}  // namespace

void DeprBuildGrid::Store(Date yearEnding, const PerBook<CurrencyAmount>& currDepr, const PerBook<CurrencyAmount>& prevDepr) {
    rows_.push_back({.YearEnding = yearEnding, .PrevDepr = prevDepr, .CurrDepr = currDepr});
}

std::string DeprBuildGrid::Cell(int row, int column) const {
    if (row < kFixedRows) return Heading(row, column);
    const DeprBuildRow& year = rows_.at(static_cast<std::size_t>(row - kFixedRows));
    if (column == 0) return FormatShortDate(year.YearEnding);
    const int book = (column + 1) / 2;
    return Format(IsPreviousColumn(column) ? year.PrevDepr[book] : year.CurrDepr[book], pictures::kTotal);
}

std::string DeprBuildGrid::TabSeparated(int firstRow, int firstColumn, int lastRow, int lastColumn) const {
    std::string text;
    for (int row = firstRow; row <= lastRow; ++row) {
        for (int column = firstColumn; column <= lastColumn; ++column) {
            if (column != firstColumn) text += '\t';
            text += Cell(row, column);
        }
        text += '\n';
    }
    return text;
}

bool CanBuild(Date federalYearEnd) {
    return federalYearEnd > Date::FromYmd(1900, 1, 1);
}

Date FirstYearEnd(Date inService, Date yearEnd) {
    const int month = yearEnd.Month();
    const int day = yearEnd.Day();
    const bool thisYear = inService.Month() < month || (inService.Month() == month && inService.Day() <= day);
    return Date::FromYmd(inService.Year() + (thisYear ? 0 : 1), month, day);
}

void BuildDepreciation(AssetRecord& record, Date federalYearEnd, ADepre& engine, DeprBuildGrid& grid) {
    grid.Clear();
    AssetRecord built = record;
    Date yearEnd = FirstYearEnd(built.InService, federalYearEnd);
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        built.YearThru[book] = -1;
        built.PrevDepr[book] = CurrencyAmount();
        built.CurrDepr[book] = CurrencyAmount();
        built.DateDeprToo[book] = yearEnd.AddYears(-1);
    }
    for (; yearEnd <= federalYearEnd; yearEnd = yearEnd.AddYears(1)) {
        for (int book = kFirstBook; book <= kLastBook; ++book) {
            built.PrevDepr[book] += built.CurrDepr[book];
            // Additional first-year depreciation counts as taken from the second year on.
            // COMPAT: the amount to depreciate leaves the additional amount out as well, so that it is taken off twice.
            if (built.YearThru[book] == 0) built.PrevDepr[book] += built.AddlDepr[book];
            ++built.YearThru[book];
            built.DateDeprToo[book] = yearEnd.AddYears(-1);
            const bool midQuarter = built.IRSConvUsed[book] == "Q";
            engine.ComputeDepreciation(built, yearEnd, midQuarter, book);
        }
        grid.Store(yearEnd, built.CurrDepr, built.PrevDepr);
    }
    record = built;
}

}  // namespace tallymar
