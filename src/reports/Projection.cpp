#include "reports/Projection.h"

#include "platform/runtime/Rounding.h"
#include "reports/ColumnReport.h"
#include "store/Books.h"

namespace tallymar {

namespace {

constexpr int kFederal = 1;
constexpr int kLastProjectedYear = 5;
constexpr Date kEarliestYearEnd = Date::FromSerial(2);  // 01/01/1900

}  // namespace

void Compute4Years(ReportRun& run, const AssetRecord& asset, FourYears& years) {
    const int book = run.Filter.Options.Book;
    years.Thru[1] = asset.YearThru[book];
    years.Curr[1] = asset.CurrDepr[book];
    years.Prev[1] = asset.PrevDepr[book];
    Date projectionDate = run.Session.FiscalYearEnd(kFederal);
    if (projectionDate <= kEarliestYearEnd) {
        run.Asking.Message(kYearEndsMissing, "Tallymar");
        return;
    }

    AssetRecord projected = asset;
    for (std::size_t year = 2; year <= kLastProjectedYear; ++year) {
        projected.PrevDepr[book] += projected.CurrDepr[book];
        projectionDate = projectionDate.AddYearsWithinMonth(1);
        projected.YearThru[book] = ToInteger(projected.YearThru[book] + 1.0);
        projected.DateDeprToo[book] = projectionDate.AddYearsWithinMonth(-1);
        const bool midQuarter = projected.IRSConvUsed[book] == "Q";
        run.Engine.ComputeDepreciation(projected, projectionDate, midQuarter, book);
        years.Curr[year] = projected.CurrDepr[book];
        years.Prev[year] = projected.PrevDepr[book];
        years.Thru[year] = projected.YearThru[book];
    }
}

}  // namespace tallymar
