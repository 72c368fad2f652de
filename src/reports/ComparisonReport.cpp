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

// Places of the amounts in the two reports.
enum : int { kFederalCost = 11, kFederalPrevious, kFederalCurrent, kOtherCurrent, kDifference };
enum : int { kBasis = 11, kThisYear, kSecondYear, kThirdYear, kFourthYear };

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
    return s.Amount(kFederalCurrent) - s.Amount(kOtherCurrent);
}

constexpr ColumnRow kComparisonColumns[] = {
    {5, 59, 5, R, false, pictures::kUsePercentTenths, "Bus", "Use %", cells::BusinessUse},
    {10, 88, 5, L, false, "", "", "Conv", cells::MarkedConvention},
    {kFederalCost, 108, 15, R, true, kReportMoney, "Federal", "Cost", FederalBasis},
    {kFederalPrevious, 124, 15, R, true, kReportMoney, "Fed Previous", "Depreciation", FederalPrevious},
    {kFederalCurrent, 140, 15, R, true, kReportMoney, "Fed Current", "Depreciation", FederalCurrent},
    {kOtherCurrent, 156, 15, R, true, kReportMoney, "{book} Current", "Depreciation", cells::CurrDepr},
    {kDifference, 172, 15, R, true, kReportMoney, "Depreciation", "Difference", Difference},
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
    {kBasis, 108, 15, R, true, kReportMoney, "Basis of", "Depreciation", cells::Basis},
    {kThisYear, 124, 15, R, true, kReportMoney, "FYE {yyyy}", "Depreciation", ThisYear},
    {kSecondYear, 140, 15, R, true, kReportMoney, "FYE {yyyy+365}", "Depreciation", ProjectedYear<2>},
    {kThirdYear, 156, 15, R, true, kReportMoney, "FYE {yyyy+730}", "Depreciation", ProjectedYear<3>},
    {kFourthYear, 172, 15, R, true, kReportMoney, "FYE {yyyy+1095}", "Depreciation", ProjectedYear<4>},
};

}  // namespace

void PrintCompReport(ReportRun& run) {
    PrintColumnReport(run, {.Tables = {kIdentificationColumns, kComparisonColumns},
                            .FirstAmount = kFederalCost,
                            .LastAmount = kDifference,
                            .IdentifiedByFederal = true,
                            .MarkNotes = true});
}

void Print4YearReport(ReportRun& run) {
    PrintColumnReport(run, {.Tables = {kIdentificationColumns, kFourYearColumns},
                            .FirstAmount = kBasis,
                            .LastAmount = kFourthYear,
                            .Projects = true,
                            .MarkNotes = true});
}

}  // namespace tallymar
