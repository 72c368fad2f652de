// The Federal book beside another one, for deferred tax and A.M.T. work, and the years to come.

#include "platform/runtime/Pictures.h"
#include "reports/ColumnReport.h"
#include "reports/ReportProcedures.h"

namespace tallymar {

namespace {

using pictures::kReportMoney;

constexpr auto L = Justify::Left;
constexpr auto R = Justify::Right;

constexpr int kFederal = 1;

Cell FederalBasis(CellSource& s) {
    return s.Asset.Basis[kFederal];
}
Cell FederalPrevious(CellSource& s) {
    return s.Asset.PrevDepr[kFederal];
}
Cell FederalCurrent(CellSource& s) {
    return s.Asset.CurrDepr[kFederal];
}
Cell Difference(CellSource& s) {
    return s.Amount(13) - s.Amount(14);
}

constexpr ColumnRow kComparisonColumns[] = {
    {5, 59, 5, R, false, pictures::kUsePercentTenths, "Bus", "Use %", cells::BusinessUse},
    {10, 88, 5, L, false, "", "", "Conv", cells::MarkedConvention},
    {11, 108, 15, R, true, kReportMoney, "Federal", "Cost", FederalBasis},
    {12, 124, 15, R, true, kReportMoney, "Fed Previous", "Depreciation", FederalPrevious},
    {13, 140, 15, R, true, kReportMoney, "Fed Current", "Depreciation", FederalCurrent},
    {14, 156, 15, R, true, kReportMoney, "{book} Current", "Depreciation", cells::CurrDepr},
    {15, 172, 15, R, true, kReportMoney, "Depreciation", "Difference", Difference},
};

Cell ThisYear(CellSource& s) {
    const CurrencyAmount current = s.Asset.CurrDepr[s.Book];
    if (s.Asset.YearThru[s.Book] != 0) return current;
    return current + s.Asset.Section179[s.Book] + s.Asset.AddlDepr[s.Book];
}
template <std::size_t Year>
Cell ProjectedYear(CellSource& s) {
    return s.Projected.Curr[Year];
}

constexpr ColumnRow kFourYearColumns[] = {
    {5, 59, 5, R, false, pictures::kUsePercentTenths, "Bus", "Use %", cells::BusinessUse},
    {10, 88, 5, L, false, "", "", "Conv", cells::MarkedConvention},
    {11, 108, 15, R, true, kReportMoney, "Basis of", "Depreciation", cells::Basis},
    {12, 124, 15, R, true, kReportMoney, "FYE {yyyy}", "Depreciation", ThisYear},
    {13, 140, 15, R, true, kReportMoney, "FYE {yyyy+365}", "Depreciation", ProjectedYear<2>},
    {14, 156, 15, R, true, kReportMoney, "FYE {yyyy+730}", "Depreciation", ProjectedYear<3>},
    {15, 172, 15, R, true, kReportMoney, "FYE {yyyy+1095}", "Depreciation", ProjectedYear<4>},
};

}  // namespace

void PrintCompReport(ReportRun& run) {
    PrintColumnReport(run, {.Tables = {kIdentificationColumns, kComparisonColumns},
                            .FirstAmount = 11,
                            .LastAmount = 15,
                            .IdentifiedByFederal = true,
                            .MarkNotes = true});
}

void Print4YearReport(ReportRun& run) {
    PrintColumnReport(run, {.Tables = {kIdentificationColumns, kFourYearColumns},
                            .FirstAmount = 11,
                            .LastAmount = 15,
                            .Projects = true,
                            .MarkNotes = true});
}

}  // namespace tallymar
