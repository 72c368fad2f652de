// What was written off this year, and the values that are left.

#include "platform/runtime/Pictures.h"
#include "reports/ColumnReport.h"
#include "reports/ReportProcedures.h"

namespace tallymar {

namespace {

using pictures::kReportMoney;
using pictures::kReportMoneyOrBlank;

constexpr auto L = Justify::Left;
constexpr auto R = Justify::Right;

Cell Earlier179(CellSource& s) {
    return s.Years > 1 ? s.Asset.Section179[s.Book] : CurrencyAmount();
}
Cell ThisYears179(CellSource& s) {
    return s.Years == 1 ? s.Asset.Section179[s.Book] : CurrencyAmount();
}

constexpr ColumnRow kCurrentDepreciationColumns[] = {
    {1, 1, 7, L, false, pictures::kText, "Asset", "Number", cells::AssetNumber},
    {4, 46, 8, L, false, "", "", "Status", cells::FlagStatus},
    {5, 59, 5, R, false, pictures::kUsePercentTenths, "Bus", "Use %", cells::BusinessUse},
    {11, 106, 12, R, true, kReportMoney, "", "Cost", cells::Basis},
    {12, 119, 12, R, true, kReportMoneyOrBlank, "Add'l 1st Year", "Depreciation", cells::FirstYearAddition},
    {13, 132, 12, R, true, kReportMoneyOrBlank, "Previous", "Section 179", Earlier179},
    {14, 145, 12, R, true, kReportMoney, "Previous", "Depreciation", cells::PrevDeprWith179AndAddl},
    {15, 158, 12, R, true, kReportMoneyOrBlank, "{mm/dd/yy}", "Section 179", ThisYears179},
    {16, 171, 12, R, true, kReportMoney, "{mm/dd/yy}", "Depreciation", cells::CurrDeprWith179},
};

// Limits of the current year's expense, column 15. The second one has always been held against the previous depreciation,
// column 14.
constexpr WarningRow kCurrentDepreciationWarnings[] = {
    {kAnyEarlierYear, 1986, 5000, 15}, {1987, 1992, 10000, 14},          {2003, kAnyLaterYear, 25000, 15},
    {2002, kAnyLaterYear, 24000, 15},  {2001, kAnyLaterYear, 24000, 15}, {2000, kAnyLaterYear, 20000, 15},
    {1999, kAnyLaterYear, 19000, 15},  {1998, kAnyLaterYear, 18500, 15}, {1997, kAnyLaterYear, 18000, 15},
    {1993, kAnyLaterYear, 17500, 15},
};

Cell AccumulatedWith179(CellSource& s) {
    const CurrencyAmount depreciation = s.Amount(10) + s.Amount(13);
    return s.Include179 ? depreciation : depreciation + s.Amount(11) + s.Amount(12);
}
Cell CostLessAccumulated(CellSource& s) {
    return s.Amount(9) - s.Amount(14);
}

constexpr ColumnRow kNetBookColumns[] = {
    {9, 79, 12, R, true, kReportMoney, "", "Cost", cells::Basis},
    {10, 92, 12, R, true, kReportMoney, "Previous", "Depreciation", cells::PrevDeprWith179AndAddl},
    {11, 105, 12, R, true, kReportMoney, "Add'l 1st Year", "Depreciation", cells::FirstYearAddition},
    {12, 118, 12, R, true, kReportMoney, "Section 179", "Depreciation", cells::Section179},
    {13, 131, 12, R, true, kReportMoney, "FYE {mm/dd/yy}", "Depreciation", cells::CurrDeprWith179},
    {14, 144, 12, R, true, kReportMoney, "Accumulated", "Depreciation", AccumulatedWith179},
    {15, 157, 12, R, true, kReportMoney, "Net Book", "Value", CostLessAccumulated},
};

Cell Accumulated(CellSource& s) {
    return s.Amount(10) + s.Amount(11);
}
Cell AssetValue(CellSource& s) {
    return s.Amount(9) - s.Amount(12);
}

constexpr ColumnRow kAssetValueColumns[] = {
    {9, 79, 12, R, true, kReportMoney, "", "Cost", cells::Basis},
    {10, 92, 12, R, true, kReportMoney, "Previous", "Depreciation", cells::PrevDepr},
    {11, 105, 12, R, true, kReportMoney, "FYE {mm/dd/yy}", "Depreciation", cells::CurrDepr},
    {12, 118, 12, R, true, kReportMoney, "Accumulated", "Depreciation", Accumulated},
    {13, 131, 12, R, true, kReportMoney, "Current", "Asset Value", AssetValue},
};

}  // namespace

void PrintCDReport(ReportRun& run) {
    PrintColumnReport(run, {.Tables = {kIdentificationColumns, kCurrentDepreciationColumns},
                            .FirstAmount = 11,
                            .LastAmount = 16,
                            .Block = SubtotalBlock::Short,
                            .TotalLabelColumn = 10,
                            .Gap = ClosingGap::AfterLastGroup,
                            .SecondLineByDateSold = true,
                            .Warnings = kCurrentDepreciationWarnings});
}

void PrintNBVReport(ReportRun& run) {
    PrintColumnReport(run, {.Tables = {kNarrowIdentificationColumns, kNetBookColumns}, .FirstAmount = 9, .LastAmount = 15});
}

void PrintAVReport(ReportRun& run) {
    PrintColumnReport(run, {.Tables = {kNarrowIdentificationColumns, kAssetValueColumns},
                            .FirstAmount = 9,
                            .LastAmount = 13,
                            .Block = SubtotalBlock::ThreePassesUnlabelled});
}

}  // namespace tallymar
