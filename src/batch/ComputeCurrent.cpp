#include "batch/ComputeCurrent.h"

#include <algorithm>

#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"
#include "store/AssetPass.h"
#include "store/Books.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

constexpr int kLastMonthOfThirdQuarter = 9;
constexpr double kMidQuarterPercent = 40.0;

void AddToTotals(const AssetRecord& record, Date asOfDate, int book, InServiceTotals& totals) {
    if (record.AssetType != "PP" || record.DeprType[book] != kMcrs) return;
    const YearMonthCount life = YearsAndMonths(record.InService, asOfDate);
    if (life.Years != 1) return;
    const CurrencyAmount cost = record.Basis[book] - record.Salvage[book] - record.Section179[book] - record.AddlDepr[book];
    const CurrencyAmount amount = CurrencyAmount::FromDouble((cost * record.BusinessUse).ToDouble() / 100.0);
    totals.InService += amount;
    if (life.Months > kLastMonthOfThirdQuarter) totals.FourthQuarter += amount;
}

void NoteFirstError(const AssetRecord& record, const ADepre& engine, ComputedBook& book) {
    book.FirstErrorAsset = record.AssetNum.Trimmed();
    book.FirstErrorStatus = PlainStatusText(engine.DeprStatusText());
    if (const std::string table = engine.MissingTable(); !table.empty()) book.FirstErrorStatus += " (" + table + ")";
}

std::string ShareText(const InServiceTotals& totals) {
    if (!(totals.InService > CurrencyAmount())) return " no MCRS personal property this year";
    return " " + totals.PercentText() + "% in the 4th quarter" + (totals.IsAboveFortyPercent() ? ": above 40%" : "");
}

std::string CountOfAssets(std::int64_t count) {
    return std::to_string(count) + (count == 1 ? " asset" : " assets");
}

}  // namespace

double InServiceTotals::FourthQuarterPercent() const {
    return InService > CurrencyAmount() ? FourthQuarter.ToDouble() / InService.ToDouble() * 100.0 : 0.0;
}

bool InServiceTotals::IsAboveFortyPercent() const {
    return FourthQuarterPercent() > kMidQuarterPercent;
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

std::vector<std::string> RemarksOn(const ComputeCurrentResult& result) {
    std::vector<std::string> remarks;
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        const ComputedBook& done = result[book];
        const std::string name = std::string(BookOf(book).Name) + ": ";
        if (done.YearEndUnset) {
            remarks.push_back(name + "no fiscal year end is set (Company Profile), so every asset came out as 0.");
        }
        if (done.Errors > 0) {
            remarks.push_back(name + CountOfAssets(done.Errors) + " could not be computed, first " + done.FirstErrorAsset + ": " +
                              done.FirstErrorStatus);
        }
        if (done.Failed) {
            remarks.push_back(name + CountOfAssets(done.Computed) + (done.Computed == 1 ? " was" : " were") +
                              " computed before the failure.");
        }
    }
    return remarks;
}

std::string SummaryOf(const ComputeCurrentResult& result) {
    struct Share {
        std::string Books;
        std::string Text;
    };
    std::vector<Share> shares;
    std::int64_t assets = 0;
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        const ComputedBook& done = result[book];
        if (!done.Chosen) continue;
        assets = std::max(assets, done.Computed);
        const std::string text = ShareText(done.Totals);
        const std::string name(BookOf(book).Name);
        const auto same = std::find_if(shares.begin(), shares.end(), [&](const Share& share) { return share.Text == text; });
        if (same != shares.end()) {
            same->Books += ", " + name;
        } else {
            shares.push_back({name, text});
        }
    }
    if (shares.empty()) return "No book is checked.";
    std::string summary = CountOfAssets(assets);
    for (const Share& share : shares) summary.append(&share == &shares.front() ? ", " : "; ").append(share.Books + share.Text);
    return summary;
}

void ComputeCurrent(CompanySession& session, ADepre& engine, const ComputeCurrentOptions& options, Prompts& prompts,
                    ComputeCurrentResult& result, const std::function<void(const ComputedAsset&)>& onComputed) {
    result = {};
    engine.BeginRun(session.RoundText(), session.LimitsByLaw());

    recordset::RunBatch(session.Database(), recordset::OnFailure::KeepDone, [&] {
        AssetPass pass(session, prompts);
        AssetRecord record;
        // The first pass rewrites whole rows, which puts in order what other programs have left in them. After it only the
        // computed columns can differ.
        bool rowsAreRewritten = false;
        for (int book = kFirstBook; book <= kLastBook; ++book) {
            if (!options.Compute[book]) continue;
            ComputedBook& done = result[book];
            const Date asOfDate = session.FiscalYearEnd(book);
            done.Chosen = true;
            done.YearEndUnset = asOfDate.IsNone();
            const auto compute = [&] {
                AddToTotals(record, asOfDate, book, done.Totals);
                engine.ComputeDepreciation(record, asOfDate, options.UseMidQuarter[book], book);
                if (rowsAreRewritten) {
                    session.WriteComputed(record, book);
                } else {
                    session.WriteAssetRecord(record);
                }
                ++done.Computed;
                const int status = engine.DeprStatusCode();
                if (IsErrorStatus(status) && done.Errors++ == 0) NoteFirstError(record, engine, done);
                if (onComputed) {
                    onComputed({record.AssetNum.Trimmed(), book, record.CurrDepr[book], status, engine.DeprStatusText()});
                }
            };
            done.Failed = true;
            pass.ForEach(record, compute, BookOf(book).Name);
            done.Failed = false;
            rowsAreRewritten = true;
        }
    });
}

}  // namespace tallymar
