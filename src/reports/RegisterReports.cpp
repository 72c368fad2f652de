// The registers: every asset with its cost, what has been written off and what is left, disposed assets taken out by group.

#include "platform/runtime/Pictures.h"
#include "reports/ColumnReport.h"
#include "reports/ReportProcedures.h"

namespace tallymar {

namespace {

using pictures::kReportMoney;

constexpr auto L = Justify::Left;
constexpr auto R = Justify::Right;

Cell NetOfAllColumns(CellSource& s) {
    return s.Amount(11) - s.Amount(12) - s.Amount(13) - s.Amount(14);
}
Cell NetOfDepreciation(CellSource& s) {
    return s.Amount(11) - s.Amount(12) - s.Amount(13);
}
Cell FairMarketValue(CellSource& s) {
    return s.Asset.FairMktValue;
}

constexpr ColumnRow kFixedAssetColumns[] = {
    {11, 108, 15, R, true, kReportMoney, "", "Cost", cells::Basis},
    {12, 124, 15, R, true, kReportMoney, "", "Section 179", cells::Section179},
    {13, 140, 15, R, true, kReportMoney, "Previous", "Depreciation", cells::PrevDeprWith179},
    {14, 156, 15, R, true, kReportMoney, "FYE {mm/dd/yy}", "Depreciation", cells::CurrDeprWith179},
    {15, 172, 15, R, true, kReportMoney, "Net Book", "Value", cells::NetBookValue},
};

constexpr ColumnRow kPropertyTaxColumns[] = {
    {1, 1, 7, L, false, pictures::kText, "Asset", "Number", cells::AssetNumber},
    {11, 108, 15, R, true, kReportMoney, "", "Cost", cells::Basis},
    {12, 124, 15, R, true, kReportMoney, "", "Section 179", cells::Section179},
    {13, 140, 15, R, true, kReportMoney, "Previous", "Depreciation", cells::PrevDepr},
    {14, 156, 15, R, true, kReportMoney, "FYE {mm/dd/yy}", "Depreciation", cells::CurrDepr},
    {15, 172, 15, R, true, kReportMoney, "Net Book", "Value", NetOfAllColumns},
};

constexpr ColumnRow kFairMarketColumns[] = {
    {1, 1, 7, L, false, pictures::kText, "Asset", "Number", cells::AssetNumber},
    {5, 59, 5, R, false, pictures::kUsePercentTenths, "Bus", "Use %", cells::BusinessUse},
    {9, 85, 4, R, false, pictures::kDecliningPercentNarrow, "", "%", cells::Percent},
    {11, 108, 15, R, true, kReportMoney, "", "Cost", cells::Basis},
    {12, 124, 15, R, true, kReportMoney, "Previous", "Depreciation", cells::PrevDeprWith179},
    {13, 140, 15, R, true, kReportMoney, "Current", "Depreciation", cells::CurrDeprWith179},
    {14, 156, 15, R, true, kReportMoney, "Net Book", "Value", NetOfDepreciation},
    {15, 172, 15, R, true, kReportMoney, "Fair Market", "Value", FairMarketValue},
};

}  // namespace

void PrintFAReport(ReportRun& run) {
    PrintColumnReport(run, {.Tables = {kIdentificationColumns, kFixedAssetColumns}, .FirstAmount = 11, .LastAmount = 15});
}

void PrintPTaxReport(ReportRun& run) {
    PrintColumnReport(run, {.Tables = {kIdentificationColumns, kPropertyTaxColumns},
                            .FirstAmount = 11,
                            .LastAmount = 15,
                            .Lists = [](const CellSource& s) { return s.Asset.PropertyTax; }});
}

void PrintFMVReport(ReportRun& run) {
    PrintColumnReport(run, {.Tables = {kIdentificationColumns, kFairMarketColumns},
                            .FirstAmount = 11,
                            .LastAmount = 15,
                            .LessDisposed = "Less Sold/Removed"});
}

}  // namespace tallymar
