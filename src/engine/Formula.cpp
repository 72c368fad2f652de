#include "engine/EngineMath.h"
#include "engine/Methods.h"
#include "platform/runtime/PlatformError.h"
#include "store/Vocabularies.h"

// Amortisation, general depreciation, ADS and ADR: straight line, declining balance without a switch, and the sum of the years'
// digits, counted by whole months.
namespace tallymar {

namespace {

CurrencyAmount SumOfYears(const WorkingRecord& record, int yearOfLife, CurrencyAmount yearFraction) {
    const CurrencyAmount years = CurrencyAmount::FromInteger(record.Period.WholePart());
    if (yearOfLife == 1) {
        const CurrencyAmount top = record.MaxDepr * yearFraction * Units(2) * years;
        return ToAmount(Real(top) / Real((years + Units(1)) * years));
    }
    // COMPAT: the months before the start are those of the calendar year of InService, whatever the fiscal year end.
    const int monthsBefore = record.InService.Month() - 1;
    const CurrencyAmount aTwelfth = ToAmount(Real(monthsBefore) / 12.0);
    const CurrencyAmount aSixth = ToAmount(Real(monthsBefore) / 6.0);
    const CurrencyAmount yearsLeft = years + Units(1) - Units(yearOfLife);
    const CurrencyAmount top = (record.MaxDepr - record.PrevDepr) * Units(2) * (yearsLeft + aTwelfth);
    const CurrencyAmount bottom = (yearsLeft + Units(1)) * (yearsLeft + aSixth);
    return bottom.IsZero() ? CurrencyAmount() : ToAmount(Real(top) / Real(bottom));
}

YearAmount Disposal(const WorkingRecord& record, const YearFacts& facts, CurrencyAmount year) {
    if (facts.SaleYear >= 2) return {CurrencyAmount(), kStatusSoldNoDepr};
    if (record.Convention() == 'N') {
        year = ToAmount(Real(year) / 12.0 * Real(facts.SaleMonth - 1));
    } else if (record.Convention() == 'M') {
        year = ToAmount(Real(year) / 24.0 * Real(facts.SaleMonth * 2 - 1));
    }
    return {year, kStatusDepreciatedToSale};
}

}  // namespace

YearAmount ComputeFormula(const WorkingRecord& record, const YearFacts& facts) {
    const CurrencyAmount yearFraction = facts.YearOfLife == 1 ? ToAmount(1.0 - Real(facts.ServiceMonth - 1) / 12.0) : Units(1);
    const bool pastLastYear = (record.Period + Units(1)).WholePart() < facts.YearOfLife;
    CurrencyAmount year;
    switch (record.DeprMethod) {
        case kSl:
            year = ToAmount(Real(record.MaxDepr) / Real(record.Period) * Real(yearFraction));
            break;
        case kDb:
            if (pastLastYear) return {CurrencyAmount(), kStatusPeriodCompleted};
            year = ToAmount(Real(record.MaxDepr - record.PrevDepr) * AnnualRate(record) * Real(yearFraction));
            break;
        case kSy:
            if (pastLastYear) return {CurrencyAmount(), kStatusPeriodCompleted};
            year = SumOfYears(record, facts.YearOfLife, yearFraction);
            break;
        default:
            // COMPAT: the edit form lets the other methods through under these types, and computing such an asset fails the whole
            // command: no rule gives an amount for them, and none is made up.
            throw PlatformError(Failure::TypeMismatch);
    }
    return facts.Disposed ? Disposal(record, facts, year) : YearAmount{year};
}

}  // namespace tallymar
