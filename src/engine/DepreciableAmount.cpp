#include "engine/ADepre.h"
#include "engine/EngineMath.h"
#include "engine/LawDates.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

// Basis adjustment for the investment credit (IRC section 48(q), from 1983 on): half of a credit that was taken at the full rate,
// 10% for lives of 5 years and more and 6% below.
constexpr int kLastYearWithoutCreditAdjustment = 1982;
constexpr CurrencyAmount kFullCreditAbove = CurrencyAmount::FromTenThousandths(900);       // 0.09
constexpr CurrencyAmount kShortLifeCreditAbove = CurrencyAmount::FromTenThousandths(500);  // 0.05
constexpr CurrencyAmount kHalf = CurrencyAmount::FromTenThousandths(5000);                 // 0.5

}  // namespace

// Takes the business part of the basis, less salvage and Section 179 expense, apart into the additional first-year amount and
// what is left for the method.
void ADepre::TakeAdditionalFirstYear() {
    maxDepr_ = record_.Basis * PercentOf(record_.BusinessUse) - record_.Salvage - record_.Section179;
    record_.AddlDepr = ToAmount(Real(maxDepr_ * record_.ADPct) / 100.0);
    maxDepr_ -= record_.AddlDepr;
}

void ADepre::ComputeMaxDepr() {
    TakeAdditionalFirstYear();
    const CurrencyAmount credit = record_.TaxCredit;
    if (credit <= CurrencyAmount() || record_.InService.Year() <= kLastYearWithoutCreditAdjustment) return;
    // The second test sees what the first has left: a class life between 4 and 5 can meet both.
    if (credit > maxDepr_ * kFullCreditAbove && record_.ClassLife > Units(4)) maxDepr_ -= credit * kHalf;
    if (credit > maxDepr_ * kShortLifeCreditAbove && record_.ClassLife < Units(5)) maxDepr_ -= credit * kHalf;
}

// The additional amount stays with new personal property of the law's time only. A dropped amount does not come back into
// maxDepr_; but in the first year both are taken again from the basis, the additional amount even when it has just been dropped
// (a percentage below 1), and without the credit's reduction.
void ADepre::ResolveAdditionalDepr() {
    const bool newPersonalProperty = record_.NewUsed == "N" && record_.IsPersonalProperty();
    const bool kept = newPersonalProperty && record_.DeprType == kMcrs &&
                      record_.InService >= kFirstDayOfAdditionalDepreciation && record_.ADPct >= Units(1);
    if (!kept) record_.AddlDepr = CurrencyAmount();
    if (yearOfLife_ == 1 && newPersonalProperty && record_.InService > kDayBeforeAdditionalDepreciation)
        TakeAdditionalFirstYear();
}

}  // namespace tallymar
