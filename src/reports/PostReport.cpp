// What closing the year moves from current to previous depreciation.

#include "platform/runtime/Pictures.h"
#include "reports/ColumnReport.h"
#include "reports/ReportProcedures.h"

namespace tallymar {

namespace {

using pictures::kReportMoney;
using pictures::kReportMoneyOrBlank;

constexpr auto L = Justify::Left;
constexpr auto R = Justify::Right;

// Places of the amounts.
enum : int { kPostedCost = 11, kAddition, kPostedExpense, kPostedPrevious, kPostedCurrent, kNewPrevious };

Cell AdditionInService(CellSource& s) {
    return s.Years > 0 ? s.Asset.AddlDepr[s.Book] : CurrencyAmount();
}
Cell ExpenseInService(CellSource& s) {
    return s.Years > 0 ? s.Asset.Section179[s.Book] : CurrencyAmount();
}
Cell NewPrevious(CellSource& s) {
    return s.Asset.PrevDepr[s.Book] + s.Asset.CurrDepr[s.Book];
}

constexpr ColumnRow kPostColumns[] = {
    {1, 1, 7, L, false, pictures::kText, "Asset", "Number", cells::AssetNumber},
    {4, 46, 8, L, false, "", "", "Status", cells::FlagStatus},
    {5, 59, 5, R, false, pictures::kUsePercentTenths, "Bus", "Use %", cells::BusinessUse},
    {kPostedCost, 106, 12, R, true, kReportMoney, "", "Cost", cells::Basis},
    {kAddition, 119, 12, R, true, kReportMoneyOrBlank, "Add'l 1st Year", "Depreciation", AdditionInService},
    {kPostedExpense, 132, 12, R, true, kReportMoneyOrBlank, "Section 179", "Expense", ExpenseInService},
    {kPostedPrevious, 145, 12, R, true, kReportMoney, "Previous", "Depreciation", cells::PrevDepr},
    {kPostedCurrent, 158, 12, R, true, kReportMoney, "{mm/dd/yy}", "Depreciation", cells::CurrDepr},
    {kNewPrevious, 171, 12, R, true, kReportMoney, "New Previous", "Depreciation", NewPrevious},
};

constexpr WarningRow kPostWarnings[] = {
    {kAnyEarlierYear, 1986, 5000}, {1987, 1992, 10000},          {2003, kAnyLaterYear, 100000}, {2002, kAnyLaterYear, 24000},
    {2001, kAnyLaterYear, 24000},  {2000, kAnyLaterYear, 20000}, {1999, kAnyLaterYear, 19000},  {1998, kAnyLaterYear, 18500},
    {1997, kAnyLaterYear, 18000},  {1993, kAnyLaterYear, 17500},
};

}  // namespace

void PrintPostReport(ReportRun& run) {
    PrintColumnReport(run, {.Tables = {kIdentificationColumns, kPostColumns},
                            .FirstAmount = kPostedCost,
                            .LastAmount = kNewPrevious,
                            .Block = SubtotalBlock::Short,
                            .TotalLabelColumn = 10,
                            .Gap = ClosingGap::AfterLastGroup,
                            .SecondLineByDateSold = true,
                            .Warnings = kPostWarnings});
}

}  // namespace tallymar
