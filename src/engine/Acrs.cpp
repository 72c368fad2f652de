#include "engine/ADepre.h"
#include "engine/AcrsPercentages.h"
#include "engine/EngineMath.h"
#include "store/Vocabularies.h"

namespace tallymar {

void ADepre::ComputeAcrs() {
    yearResult_ = CurrencyAmount();
    const std::int16_t method = record_.DeprMethod;
    if (method == kMi || method == kXx) return MarkNonDepreciable();

    if (disposed_ && !record_.IsRealProperty() && method == kSl) {
        if (saleYear_ == 1) {
            const bool midMonth = record_.Convention() == 'Y' || record_.Convention() == 'M';
            yearFraction_ = midMonth ? ToAmount(Real(saleMonth_) / 12.0 - 1.0 / 24.0) : ToAmount(Real(saleMonth_ - 1) / 12.0);
        }
        yearResult_ = ToAmount(Real(maxDepr_) / Real(record_.Period) * Real(yearFraction_));
        return SetStatus(kStatusDepreciatedToSale);
    }
    if (record_.SwitchYear > 0 && asOfYear_ >= record_.SwitchYear) return ComputeSwitchedAcrs();
    if (method != kAc && method != kSl && method != kLh && method != kUt) return SetStatus(kStatusNotAcrsMethod);
    if (record_.DeprType == kAcam || record_.ClassLife > Units(10)) return ComputeFromTable();
    ComputeAcrsByMethod();
}

// Straight line over the periods left, from a basis that the user has entered.
void ADepre::ComputeSwitchedAcrs() {
    if (record_.SwitchBasis < Units(1)) return SetStatus(kStatusNoSwitchBasis);
    const std::int64_t periodsLeft = record_.Period.WholePart() - record_.SwitchPeriod + 1;
    if (periodsLeft < 1) return SetStatus(kStatusSwitchYearError);
    // To the cent, from the exact quotient so that every half cent goes up.
    const std::int64_t perCent = CurrencyAmount::kScale / 100 * periodsLeft;
    const std::int64_t count = record_.SwitchBasis.TenThousandths();
    yearResult_ = FromCents(count / perCent + (count % perCent * 2 >= perCent ? 1 : 0));
}

void ADepre::ComputeAcrsByMethod() {
    const std::int64_t wholePeriod = record_.Period.WholePart();
    if (record_.DeprMethod == kSl) {
        yearResult_ = ToAmount(Real(maxDepr_) / Real(record_.Period));
    } else {
        for (const AcrsClass& entry : kAcrsClasses) {
            if (entry.Period != wholePeriod || yearOfLife_ > static_cast<int>(entry.Percent.size())) continue;
            const int percent = entry.Percent.at(static_cast<std::size_t>(yearOfLife_ - 1));
            yearResult_ = PercentageToCent(maxDepr_, Units(percent));
        }
    }
    if (record_.Convention() == 'N' && disposed_) yearResult_ = ToAmount(Real(yearResult_) / 12.0 * Real(saleMonth_));
    if (record_.DeprMethod != kSl || record_.Convention() != 'Y') return;
    const bool firstOrLast = yearOfLife_ == 1 || yearOfLife_ == (record_.Period + Units(1)).WholePart();
    if (firstOrLast) yearResult_ = ToAmount(Real(yearResult_) / 2.0);
}

}  // namespace tallymar
