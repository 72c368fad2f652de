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

// Places of the amounts in the current depreciation, net book value and asset value reports.
enum : int { kYearCost = 11, kYearAddition, kYearEarlier179, kYearPrevious, kYear179, kYearCurrent };
enum : int { kNetCost = 9, kNetPrevious, kNetAddition, kNet179, kNetCurrent, kNetAccumulated, kNetValue };
enum : int { kAssetCost = 9, kAssetPrevious, kAssetCurrent, kAssetAccumulated, kAssetWorth };

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
    {kYearCost, 106, 12, R, true, kReportMoney, "", "Cost", cells::Basis},
    {kYearAddition, 119, 12, R, true, kReportMoneyOrBlank, "Add'l 1st Year", "Depreciation", cells::FirstYearAddition},
    {kYearEarlier179, 132, 12, R, true, kReportMoneyOrBlank, "Previous", "Section 179", Earlier179},
    {kYearPrevious, 145, 12, R, true, kReportMoney, "Previous", "Depreciation", cells::PrevDeprWith179AndAddl},
    {kYear179, 158, 12, R, true, kReportMoneyOrBlank, "{mm/dd/yy}", "Section 179", ThisYears179},
    {kYearCurrent, 171, 12, R, true, kReportMoney, "{mm/dd/yy}", "Depreciation", cells::CurrDeprWith179},
};

// Limits of the current year's expense. COMPAT: the second one is held against the previous depreciation.
constexpr WarningRow kCurrentDepreciationWarnings[] = {
    {kAnyEarlierYear, 1986, 5000, kYear179}, {1987, 1992, 10000, kYearPrevious},     {2003, kAnyLaterYear, 25000, kYear179},
    {2002, kAnyLaterYear, 24000, kYear179},  {2001, kAnyLaterYear, 24000, kYear179}, {2000, kAnyLaterYear, 20000, kYear179},
    {1999, kAnyLaterYear, 19000, kYear179},  {1998, kAnyLaterYear, 18500, kYear179}, {1997, kAnyLaterYear, 18000, kYear179},
    {1993, kAnyLaterYear, 17500, kYear179},
};

Cell AccumulatedWith179(CellSource& s) {
    const CurrencyAmount depreciation = s.Amount(kNetPrevious) + s.Amount(kNetCurrent);
    return s.Include179 ? depreciation : depreciation + s.Amount(kNetAddition) + s.Amount(kNet179);
}
Cell CostLessAccumulated(CellSource& s) {
    return s.Amount(kNetCost) - s.Amount(kNetAccumulated);
}

constexpr ColumnRow kNetBookColumns[] = {
    {kNetCost, 79, 12, R, true, kReportMoney, "", "Cost", cells::Basis},
    {kNetPrevious, 92, 12, R, true, kReportMoney, "Previous", "Depreciation", cells::PrevDeprWith179AndAddl},
    {kNetAddition, 105, 12, R, true, kReportMoney, "Add'l 1st Year", "Depreciation", cells::FirstYearAddition},
    {kNet179, 118, 12, R, true, kReportMoney, "Section 179", "Depreciation", cells::Section179},
    {kNetCurrent, 131, 12, R, true, kReportMoney, "FYE {mm/dd/yy}", "Depreciation", cells::CurrDeprWith179},
    {kNetAccumulated, 144, 12, R, true, kReportMoney, "Accumulated", "Depreciation", AccumulatedWith179},
    {kNetValue, 157, 12, R, true, kReportMoney, "Net Book", "Value", CostLessAccumulated},
};

Cell Accumulated(CellSource& s) {
    return s.Amount(kAssetPrevious) + s.Amount(kAssetCurrent);
}
Cell AssetValue(CellSource& s) {
    return s.Amount(kAssetCost) - s.Amount(kAssetAccumulated);
}

constexpr ColumnRow kAssetValueColumns[] = {
    {kAssetCost, 79, 12, R, true, kReportMoney, "", "Cost", cells::Basis},
    {kAssetPrevious, 92, 12, R, true, kReportMoney, "Previous", "Depreciation", cells::PrevDepr},
    {kAssetCurrent, 105, 12, R, true, kReportMoney, "FYE {mm/dd/yy}", "Depreciation", cells::CurrDepr},
    {kAssetAccumulated, 118, 12, R, true, kReportMoney, "Accumulated", "Depreciation", Accumulated},
    {kAssetWorth, 131, 12, R, true, kReportMoney, "Current", "Asset Value", AssetValue},
};

}  // namespace

void PrintCDReport(ReportRun& run) {
    PrintColumnReport(run, {.Tables = {kIdentificationColumns, kCurrentDepreciationColumns},
                            .FirstAmount = kYearCost,
                            .LastAmount = kYearCurrent,
                            .Block = SubtotalBlock::Short,
                            .TotalLabelColumn = 10,
                            .Gap = ClosingGap::AfterLastGroup,
                            .SecondLineByDateSold = true,
                            .Warnings = kCurrentDepreciationWarnings});
}

void PrintNBVReport(ReportRun& run) {
    PrintColumnReport(
        run, {.Tables = {kNarrowIdentificationColumns, kNetBookColumns}, .FirstAmount = kNetCost, .LastAmount = kNetValue});
}

void PrintAVReport(ReportRun& run) {
    PrintColumnReport(run, {.Tables = {kNarrowIdentificationColumns, kAssetValueColumns},
                            .FirstAmount = kAssetCost,
                            .LastAmount = kAssetWorth,
                            .Block = SubtotalBlock::ThreePassesUnlabelled});
}

}  // namespace tallymar
