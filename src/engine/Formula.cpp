#include "engine/ADepre.h"
#include "engine/EngineMath.h"
#include "platform/runtime/PlatformError.h"
#include "store/Vocabularies.h"

// Amortisation, general depreciation, ADS and ADR: straight line, declining balance without a switch, and the sum of the years'
// digits, counted by whole months.
namespace tallymar {

void ADepre::ComputeFormula() {
    if (yearOfLife_ == 1) yearFraction_ = ToAmount(1.0 - Real(serviceMonth_ - 1) / 12.0);
    const bool pastLastYear = (record_.Period + Units(1)).WholePart() < yearOfLife_;
    switch (record_.DeprMethod) {
        case kSl:
            yearResult_ = ToAmount(Real(maxDepr_) / Real(record_.Period) * Real(yearFraction_));
            break;
        case kDb:
            if (pastLastYear) return SetStatus(kStatusPeriodCompleted);
            yearResult_ = ToAmount(Real(maxDepr_ - record_.PrevDepr) * AnnualRate() * Real(yearFraction_));
            break;
        case kSy:
            if (pastLastYear) return SetStatus(kStatusPeriodCompleted);
            FormulaSumOfYears();
            break;
        default:
            // The edit form lets the other methods through under these types; that they stop a run here is long-standing and has
            // kept anyone from filing on an amount that no rule gives.
            throw PlatformError(Failure::TypeMismatch);
    }
    if (disposed_) FormulaDisposal();
}

void ADepre::FormulaSumOfYears() {
    const CurrencyAmount years = CurrencyAmount::FromInteger(record_.Period.WholePart());
    if (yearOfLife_ == 1) {
        const CurrencyAmount top = maxDepr_ * yearFraction_ * Units(2) * years;
        yearResult_ = ToAmount(Real(top) / Real((years + Units(1)) * years));
        return;
    }
    // The months before the start lie in the calendar year of InService, whatever the fiscal year end.
    const int monthsBefore = record_.InService.Month() - 1;
    const CurrencyAmount aTwelfth = ToAmount(Real(monthsBefore) / 12.0);
    const CurrencyAmount aSixth = ToAmount(Real(monthsBefore) / 6.0);
    const CurrencyAmount yearsLeft = years + Units(1) - Units(yearOfLife_);
    const CurrencyAmount top = (maxDepr_ - record_.PrevDepr) * Units(2) * (yearsLeft + aTwelfth);
    const CurrencyAmount bottom = (yearsLeft + Units(1)) * (yearsLeft + aSixth);
    if (!bottom.IsZero()) yearResult_ = ToAmount(Real(top) / Real(bottom));
}

void ADepre::FormulaDisposal() {
    if (saleYear_ >= 2) {
        SetStatus(kStatusSoldNoDepr);
        yearResult_ = CurrencyAmount();
        return;
    }
    if (record_.Convention() == 'N') {
        yearResult_ = ToAmount(Real(yearResult_) / 12.0 * Real(saleMonth_ - 1));
    } else if (record_.Convention() == 'M') {
        yearResult_ = ToAmount(Real(yearResult_) / 24.0 * Real(saleMonth_ * 2 - 1));
    }
    SetStatus(kStatusDepreciatedToSale);
}

}  // namespace tallymar
