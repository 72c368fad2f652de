#include "engine/EngineMath.h"
#include "engine/LawDates.h"
#include "engine/Methods.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

// Basis adjustment for the investment credit (IRC section 48(q), from 1983 on): half of a credit that was taken at the full rate,
// 10% for lives of 5 years and more and 6% below.
constexpr int kLastYearWithoutCreditAdjustment = 1982;
constexpr double kFullCreditAbove = 0.09;
constexpr double kShortLifeCreditAbove = 0.05;

// COMPAT: compared in double, on the asset form as here: 9% of 30.00 is 2.6999999999999997, so a credit of 2.70 lies above it.
void TakeHalfOfCreditAbove(double share, WorkingRecord& record) {
    if (Real(record.TaxCredit) > Real(record.MaxDepr) * share) {
        record.MaxDepr = ToAmount(Real(record.MaxDepr) - Real(record.TaxCredit) * 0.5);
    }
}

// Divides the business part of the basis, less salvage and Section 179 expense, into the additional first-year amount and what is
// left for the method.
void TakeAdditionalFirstYear(WorkingRecord& record) {
    record.MaxDepr = record.Basis * PercentOf(record.BusinessUse) - record.Salvage - record.Section179;
    record.AddlDepr = ToAmount(Real(record.MaxDepr * record.ADPct) / 100.0);
    record.MaxDepr -= record.AddlDepr;
}

}  // namespace

void TakeMaxDepr(WorkingRecord& record) {
    TakeAdditionalFirstYear(record);
    if (record.TaxCredit <= CurrencyAmount() || record.InService.Year() <= kLastYearWithoutCreditAdjustment) return;
    // The second test sees what the first has left: a class life between 4 and 5 can meet both.
    if (record.ClassLife > Units(4)) TakeHalfOfCreditAbove(kFullCreditAbove, record);
    if (record.ClassLife < Units(5)) TakeHalfOfCreditAbove(kShortLifeCreditAbove, record);
}

// COMPAT: the additional amount stays with new personal property of the law's time only. A dropped amount does not come back into
// MaxDepr; but in the first year both are taken again from the basis, the additional amount even when it has just been dropped (a
// percentage below 1), and without the credit's reduction.
void ResolveAdditionalDepr(WorkingRecord& record, const YearFacts& facts) {
    const bool newPersonalProperty = record.NewUsed == "N" && record.IsPersonalProperty();
    const bool kept = newPersonalProperty && record.DeprType == kMcrs && record.InService >= kFirstDayOfAdditionalDepreciation &&
                      record.ADPct >= Units(1);
    if (!kept) record.AddlDepr = CurrencyAmount();
    if (facts.YearOfLife == 1 && newPersonalProperty && record.InService > kDayBeforeAdditionalDepreciation) {
        TakeAdditionalFirstYear(record);
    }
}

}  // namespace tallymar
