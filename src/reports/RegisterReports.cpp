// The registers: every asset with its cost, what has been written off and what is left, disposed assets taken out by group.

#include "platform/runtime/Pictures.h"
#include "reports/ColumnReport.h"
#include "reports/ReportProcedures.h"

namespace tallymar {

namespace {

using pictures::kReportMoney;

constexpr auto L = Justify::Left;
constexpr auto R = Justify::Right;

// Places of the fair market report's amounts.
enum : int { kMarketCost = 11, kMarketPrevious, kMarketCurrent, kMarketBookValue, kMarketValue };

Cell NetOfAllColumns(CellSource& s) {
    return s.Amount(kCost) - s.Amount(kExpense) - s.Amount(kPrevious) - s.Amount(kCurrent);
}
Cell NetOfDepreciation(CellSource& s) {
    return s.Amount(kMarketCost) - s.Amount(kMarketPrevious) - s.Amount(kMarketCurrent);
}
Cell FairMarketValue(CellSource& s) {
    return s.Asset.FairMktValue;
}

constexpr ColumnRow kFixedAssetColumns[] = {
    {kCost, 108, 15, R, true, kReportMoney, "", "Cost", cells::Basis},
    {kExpense, 124, 15, R, true, kReportMoney, "", "Section 179", cells::Section179},
    {kPrevious, 140, 15, R, true, kReportMoney, "Previous", "Depreciation", cells::PrevDeprWith179},
    {kCurrent, 156, 15, R, true, kReportMoney, "FYE {mm/dd/yy}", "Depreciation", cells::CurrDeprWith179},
    {kBookValue, 172, 15, R, true, kReportMoney, "Net Book", "Value", cells::NetBookValue},
};

constexpr ColumnRow kPropertyTaxColumns[] = {
    {1, 1, 7, L, false, pictures::kText, "Asset", "Number", cells::AssetNumber},
    {kCost, 108, 15, R, true, kReportMoney, "", "Cost", cells::Basis},
    {kExpense, 124, 15, R, true, kReportMoney, "", "Section 179", cells::Section179},
    {kPrevious, 140, 15, R, true, kReportMoney, "Previous", "Depreciation", cells::PrevDepr},
    {kCurrent, 156, 15, R, true, kReportMoney, "FYE {mm/dd/yy}", "Depreciation", cells::CurrDepr},
    {kBookValue, 172, 15, R, true, kReportMoney, "Net Book", "Value", NetOfAllColumns},
};

constexpr ColumnRow kFairMarketColumns[] = {
    {1, 1, 7, L, false, pictures::kText, "Asset", "Number", cells::AssetNumber},
    {5, 59, 5, R, false, pictures::kUsePercentTenths, "Bus", "Use %", cells::BusinessUse},
    {9, 85, 4, R, false, pictures::kDecliningPercentNarrow, "", "%", cells::Percent},
    {kMarketCost, 108, 15, R, true, kReportMoney, "", "Cost", cells::Basis},
    {kMarketPrevious, 124, 15, R, true, kReportMoney, "Previous", "Depreciation", cells::PrevDeprWith179},
    {kMarketCurrent, 140, 15, R, true, kReportMoney, "Current", "Depreciation", cells::CurrDeprWith179},
    {kMarketBookValue, 156, 15, R, true, kReportMoney, "Net Book", "Value", NetOfDepreciation},
    {kMarketValue, 172, 15, R, true, kReportMoney, "Fair Market", "Value", FairMarketValue},
};

}  // namespace

void PrintFAReport(ReportRun& run) {
    PrintColumnReport(run,
                      {.Tables = {kIdentificationColumns, kFixedAssetColumns}, .FirstAmount = kCost, .LastAmount = kBookValue});
}

void PrintPTaxReport(ReportRun& run) {
    PrintColumnReport(run, {.Tables = {kIdentificationColumns, kPropertyTaxColumns},
                            .FirstAmount = kCost,
                            .LastAmount = kBookValue,
                            .Lists = [](const CellSource& s) { return s.Asset.PropertyTax; }});
}

void PrintFMVReport(ReportRun& run) {
    PrintColumnReport(run, {.Tables = {kIdentificationColumns, kFairMarketColumns},
                            .FirstAmount = kMarketCost,
                            .LastAmount = kMarketValue,
                            .LessDisposed = "Less Sold/Removed"});
}

}  // namespace tallymar
