#include "engine/YearFacts.h"

#include "store/Disposal.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

// Where the disposal lies, for an asset that bears the marks of one.
void PlaceDisposal(const WorkingRecord& record, Date asOf, YearFacts& facts) {
    if (record.DateSold.IsNone()) {
        facts.SaleStatus = kStatusInvalidSoldDate;
        return;
    }
    const int asOfMonth = asOf.Month();
    const int soldYear = record.DateSold.Year();
    const int soldMonth = record.DateSold.Month();

    if (asOfMonth == 12 && asOf.Day() == 31 && soldYear == facts.AsOfYear) {
        facts.SaleYear = 1;
        facts.SaleMonth = soldMonth;
    } else {
        facts.SaleMonth = 12 - (asOfMonth - soldMonth);
        facts.SaleYear = facts.AsOfYear + 1 - soldYear;
        if (facts.SaleMonth > 12) {
            facts.SaleMonth -= 12;
            --facts.SaleYear;
        }
        if (facts.SaleYear > 1) facts.SaleStatus = kStatusSoldNoDepr;
    }

    if (soldYear > facts.AsOfYear || (soldYear == facts.AsOfYear && soldMonth > asOfMonth)) {
        facts.Disposed = false;  // the sale belongs to a later fiscal year
        return;
    }
    if (record.IsRealProperty() && record.DeprType == kAcrs) return;
    if (record.DeprType == kMcrs || facts.SaleYear <= 0) return;
    if (record.Convention() == 'Y' || record.Convention() == 'N') facts.SaleStatus = kStatusSoldNoDepr;
}

}  // namespace

YearFacts FactsOfYear(const WorkingRecord& record, Date asOf, bool useMidQuarter) {
    const YearMonthCount count = YearsAndMonths(record.InService, asOf);
    YearFacts facts{.AsOfYear = asOf.Year(),
                    .YearOfLife = count.Years,
                    .ServiceMonth = count.Months,
                    .UseMidQuarter = useMidQuarter,
                    .Disposed = CheckDisposed(record)};
    if (facts.Disposed) PlaceDisposal(record, asOf, facts);
    return facts;
}

}  // namespace tallymar
