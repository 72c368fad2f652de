#include "batch/ComputeCurrent.h"

#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"
#include "store/AssetPass.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

constexpr int kLastMonthOfThirdQuarter = 9;

void AddToTotals(const AssetRecord& record, Date asOfDate, int book, InServiceTotals& totals) {
    if (record.AssetType != "PP" || record.DeprType[book] != kMcrs) return;
    const YearMonthCount life = YearsAndMonths(record.InService, asOfDate);
    if (life.Years != 1) return;
    const CurrencyAmount cost = record.Basis[book] - record.Salvage[book] - record.Section179[book] - record.AddlDepr[book];
    const CurrencyAmount amount = CurrencyAmount::FromDouble((cost * record.BusinessUse).ToDouble() / 100.0);
    totals.InService += amount;
    if (life.Months > kLastMonthOfThirdQuarter) totals.FourthQuarter += amount;
}

}  // namespace

double InServiceTotals::FourthQuarterPercent() const {
    return InService > CurrencyAmount() ? FourthQuarter.ToDouble() / InService.ToDouble() * 100.0 : 0.0;
}

std::string InServiceTotals::InServiceText() const {
    return Format(InService, pictures::kTotal);
}

std::string InServiceTotals::FourthQuarterText() const {
    return Format(FourthQuarter, pictures::kTotal);
}

std::string InServiceTotals::PercentText() const {
    return Format(FourthQuarterPercent(), pictures::kPercent);
}

PerBook<InServiceTotals> ComputeCurrent(CompanySession& session, ADepre& engine, const ComputeCurrentOptions& options,
                                        Prompts& prompts, const std::function<void(const ComputedAsset&)>& onComputed) {
    PerBook<InServiceTotals> totals;
    engine.RoundText = session.RoundText();

    recordset::RunBatch(session.Database(), recordset::OnFailure::KeepDone, [&] {
        AssetPass pass(session, prompts);
        AssetRecord record;
        for (int book = kFirstBook; book <= kLastBook; ++book) {
            if (!options.Compute[book]) continue;
            const Date asOfDate = session.FiscalYearEnd(book);
            const auto compute = [&] {
                AddToTotals(record, asOfDate, book, totals[book]);
                engine.ComputeDepreciation(record, asOfDate, options.UseMidQuarter[book], book);
                session.WriteAssetRecord(record);
                if (onComputed) {
                    onComputed({record.AssetNum.Trimmed(), book, record.CurrDepr[book], engine.DeprStatusCode(),
                                engine.DeprStatusText()});
                }
            };
            pass.ForEach(record, compute, kBookNames[static_cast<std::size_t>(book)]);
        }
    });
    return totals;
}

}  // namespace tallymar
