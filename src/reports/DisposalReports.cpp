// What was sold, and what stocks and collectibles have brought.

#include "platform/runtime/Pictures.h"
#include "platform/runtime/Rounding.h"
#include "reports/ColumnReport.h"
#include "reports/ReportProcedures.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

using pictures::kReportDate;
using pictures::kReportMoney;

constexpr auto L = Justify::Left;
constexpr auto R = Justify::Right;

// Places of the amounts of assets sold, and of investments.
enum : int { kSaleProceeds = 6, kSaleExpense, kSaleCost, kSaleDepreciation, kSaleBookValue, kSaleGain };
enum : int { kPaid = 6, kWorth, kReceived, kExpenses, kGain, kGain28 };

Cell DateSold(CellSource& s) {
    return s.Asset.DateSold;
}
Cell Proceeds(CellSource& s) {
    return s.Asset.SoldAmount;
}
Cell Expense(CellSource& s) {
    return s.Asset.SoldExpense;
}

Cell AllDepreciation(CellSource& s) {
    return s.Asset.PrevDepr[s.Book] + s.Asset.CurrDepr[s.Book] + s.Asset.Section179[s.Book];
}
Cell BookValueAtSale(CellSource& s) {
    return s.Amount(kSaleCost) - s.Amount(kSaleDepreciation);
}
Cell GainOrLoss(CellSource& s) {
    return s.Amount(kSaleProceeds) - s.Amount(kSaleExpense) - s.Amount(kSaleBookValue);
}

constexpr ColumnRow kAssetSoldColumns[] = {
    {1, 1, 8, L, false, "", "Asset", "Number", cells::AssetNumber},
    {2, 10, 32, L, false, "", "", "Description", cells::Description},
    // COMPAT: the heading says purchased, the date is that of service.
    {3, 54, 10, R, false, kReportDate, "Date", "Purchased", cells::InService},
    {4, 66, 10, R, false, kReportDate, "Date", "Sold", DateSold},
    {5, 68, 8, L, false, "", "", "Status", cells::DisposalStatus},
    {kSaleProceeds, 90, 12, R, true, kReportMoney, "Gross", "Proceeds", Proceeds},
    {kSaleExpense, 105, 12, R, true, kReportMoney, "Selling", "Expense", Expense},
    {kSaleCost, 118, 12, R, true, kReportMoney, "", "Cost", cells::Basis},
    {kSaleDepreciation, 132, 12, R, true, kReportMoney, "Accumulated", "Depreciation", AllDepreciation},
    {kSaleBookValue, 146, 12, R, true, kReportMoney, "Net Book", "Value", BookValueAtSale},
    {kSaleGain, 160, 12, R, true, kReportMoney, "Net", "Gain/Loss", GainOrLoss},
};

Cell DateSoldOrBlank(CellSource& s) {
    if (!s.Asset.Sold) return std::string(10, ' ');
    return s.Asset.DateSold;
}

Cell DaysOwned(CellSource& s) {
    const Date until = s.Asset.Sold ? s.Asset.DateSold : s.Now;
    return CurrencyAmount::FromInteger(ToLong(until.Serial() - s.Asset.InService.Serial()));
}

Cell MarketValueOfUnsold(CellSource& s) {
    return s.Asset.Sold ? CurrencyAmount() : s.Asset.FairMktValue;
}
Cell InvestmentGain(CellSource& s) {
    return s.Asset.Sold ? s.Amount(kReceived) - s.Amount(kExpenses) - s.Amount(kPaid) : CurrencyAmount();
}
// Gains on collectibles are taxed at up to 28 %: IRC section 1(h)(4).
Cell GainAt28Percent(CellSource& s) {
    return s.Asset.DeprType[s.Book] == kColl ? s.Amount(kGain) : CurrencyAmount();
}

constexpr ColumnRow kInvestmentColumns[] = {
    {1, 1, 7, L, false, "", "", "#", cells::AssetNumber},
    {2, 9, 32, L, false, "", "", "Description", cells::Description},
    {3, 52, 10, R, false, kReportDate, "Date", "Purchased", cells::InService},
    {4, 64, 10, R, false, kReportDate, "Date", "Sold", DateSoldOrBlank},
    {5, 78, 12, R, false, kReportMoney, "Number of", "Days Owned", DaysOwned},
    {kPaid, 93, 12, R, true, kReportMoney, "", "Cost", cells::Basis},
    {kWorth, 108, 12, R, true, kReportMoney, "Current Fair", "Market Value", MarketValueOfUnsold},
    {kReceived, 123, 12, R, true, kReportMoney, "Gross", "Proceeds", Proceeds},
    {kExpenses, 138, 12, R, true, kReportMoney, "Selling", "Expense", Expense},
    {kGain, 153, 12, R, true, kReportMoney, "Net", "Gain/Loss", InvestmentGain},
    {kGain28, 168, 12, R, true, kReportMoney, "28% Net", "Gain/Loss", GainAt28Percent},
};

}  // namespace

void PrintASReport(ReportRun& run) {
    PrintColumnReport(run, {.Tables = {kAssetSoldColumns},
                            .FirstAmount = kSaleProceeds,
                            .LastAmount = kSaleGain,
                            .Block = SubtotalBlock::Short,
                            .TotalLabelColumn = 10,
                            .Gap = ClosingGap::BeforeLastGroup,
                            .Filter = FilterMode::DateSold,
                            .Considers = [](const CellSource& s) { return s.IsDisposed; }});
}

void PrintSCReport(ReportRun& run) {
    PrintColumnReport(
        run,
        {.Tables = {kInvestmentColumns},
         .FirstAmount = kPaid,
         .LastAmount = kGain28,
         .Block = SubtotalBlock::Short,
         .Considers = [](const CellSource& s) { return s.Asset.DeprType[s.Book] == kStck || s.Asset.DeprType[s.Book] == kColl; },
         .SecondLineByDateSold = true});
}

}  // namespace tallymar
