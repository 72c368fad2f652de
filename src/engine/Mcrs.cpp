#include <algorithm>

#include "engine/ADepre.h"
#include "engine/EngineMath.h"
#include "store/Vocabularies.h"

// Modified ACRS by formula: the result agrees with the percentage tables of IRS Publication 946 within their rounding, and
// follows the remaining basis instead of a table.
namespace tallymar {

namespace {

constexpr CurrencyAmount Eighths(int eighths) {
    return CurrencyAmount::FromTenThousandths(CurrencyAmount::kScale / 8 * eighths);
}
constexpr CurrencyAmount kHalfYear = Eighths(4);
constexpr CurrencyAmount kWholeYear = Eighths(8);

// The part of the year up to the middle of a month's quarter, and the part behind it.
struct QuarterParts {
    CurrencyAmount Before;
    CurrencyAmount Behind;
};
constexpr QuarterParts kQuarters[] = {
    {Eighths(1), Eighths(7)},
    {Eighths(3), Eighths(5)},
    {Eighths(5), Eighths(3)},
    {Eighths(7), Eighths(1)},
};

// nullptr for a month outside 1 to 12: a disposal without a date has none.
const QuarterParts* QuarterOf(int month) {
    return month >= 1 && month <= 12 ? &kQuarters[(month - 1) / 3] : nullptr;
}

}  // namespace

void ADepre::ComputeMcrs() {
    if (disposed_ && saleYear_ >= 1) {
        if (record_.IsPersonalProperty()) return McrsPersonalDisposal();
        if (record_.IsRealProperty()) return McrsRealDisposal();
        return;
    }
    if (yearOfLife_ == 1) {
        if (record_.Convention() == 'N' || record_.IsRealProperty()) {
            yearFraction_ = kWholeYear - ToAmount(Real(serviceMonth_ - 1) / 12.0);
        }
        if (record_.IsPersonalProperty() && record_.Convention() == 'Y') yearFraction_ = ToAmount(Real(yearFraction_) / 2.0);
    }
    switch (record_.DeprMethod) {
        case kSl:
            if (record_.IsPersonalProperty()) McrsPersonalStraightLine();
            if (record_.IsRealProperty()) McrsRealStraightLine();
            return;
        case kDb:
            return McrsDecliningBalance();
        case kMi:
        case kXx:
            return MarkNonDepreciable();
        default:
            return SetStatus(kStatusIncorrectMethod);
    }
}

void ADepre::McrsPersonalStraightLine() {
    ResolveAdditionalDepr();
    if (useMidQuarter_ && yearOfLife_ == 1) return McrsMidQuarterFirstYear();
    yearResult_ = ToAmount(Real(maxDepr_) / Real(record_.Period) * Real(yearFraction_));
}

void ADepre::McrsRealStraightLine() {
    const double wholeYear = Real(maxDepr_) / Real(record_.Period);
    if (yearOfLife_ > 1 && !disposed_) {
        yearResult_ = ToAmount(wholeYear * Real(yearFraction_));
        return;
    }
    if (yearOfLife_ == 1) record_.IRSConvUsed = "M";
    yearResult_ = ToAmount(wholeYear * Real(yearFraction_) - wholeYear / 24.0);  // the month in service counts half
}

void ADepre::McrsDecliningBalance() {
    // Before the additional step, unlike the straight line.
    if (useMidQuarter_ && yearOfLife_ == 1) return McrsMidQuarterFirstYear();
    if ((record_.Period + kWholeYear + kHalfYear).WholePart() < yearOfLife_ && !record_.Auto) {
        return SetStatus(kStatusPeriodCompleted);
    }
    yearResult_ = CurrencyAmount();
    ResolveAdditionalDepr();
    const CurrencyAmount remainingBasis = maxDepr_ - record_.PrevDepr;
    yearResult_ = ToAmount(Real(remainingBasis) * AnnualRate() * Real(yearFraction_));
    if (yearOfLife_ < 2) return;
    // The switch to straight line: tested afresh each year.
    const CurrencyAmount remainingPeriod = RemainingPeriod();
    if (remainingPeriod.IsZero()) {
        yearResult_ = std::max(yearResult_, CurrencyAmount());
    } else {
        yearResult_ = std::max(yearResult_, ToAmount(Real(remainingBasis) / Real(remainingPeriod)));
    }
}

// The years of life left at the start of the year computed, with the part that the convention has moved behind the last whole
// year.
CurrencyAmount ADepre::RemainingPeriod() const {
    const CurrencyAmount wholeYears = record_.Period - Units(record_.YearThru);
    switch (record_.Convention()) {
        case 'Y':
        case 'M':
            return wholeYears + kHalfYear;
        case 'Q':
            if (const QuarterParts* quarter = QuarterOf(serviceMonth_)) return wholeYears + quarter->Before;
            return wholeYears;
        default:
            return wholeYears;
    }
}

void ADepre::McrsMidQuarterFirstYear() {
    record_.IRSConvUsed = "Q";
    if (record_.DeprMethod == kSl) {
        yearResult_ = ToAmount(Real(maxDepr_) / Real(record_.Period));
    } else if (record_.DeprMethod == kDb) {
        yearResult_ = ToAmount(Real(maxDepr_) * AnnualRate());
    }
    if (const QuarterParts* quarter = QuarterOf(serviceMonth_)) yearResult_ = yearResult_ * quarter->Behind;
}

void ADepre::McrsPersonalDisposal() {
    switch (record_.Convention()) {
        case 'N':
            yearFraction_ = ToAmount(Real(saleMonth_ - 1) / 12.0);
            break;
        case 'Y':
            yearFraction_ = ToAmount(Real(yearFraction_) / 2.0);
            break;
        case 'Q':
            if (const QuarterParts* quarter = QuarterOf(saleMonth_)) yearFraction_ = yearFraction_ * quarter->Before;
            break;
        default:
            break;
    }
    if (record_.DeprMethod == kSl) {
        yearResult_ = ToAmount(Real(maxDepr_) / Real(record_.Period) * Real(yearFraction_));
        return SetStatus(kStatusDepreciatedToSale);
    }
    const CurrencyAmount remainingBasis = maxDepr_ - record_.PrevDepr;
    yearResult_ = ToAmount(Real(remainingBasis) * AnnualRate() * Real(yearFraction_));
    if (yearOfLife_ < 2) return;
    const CurrencyAmount remainingPeriod = RemainingPeriod();
    CurrencyAmount straightLine;
    if (!remainingPeriod.IsZero()) straightLine = ToAmount(Real(remainingBasis) / Real(remainingPeriod)) * yearFraction_;
    yearResult_ = std::max(yearResult_, straightLine);
    SetStatus(kStatusDepreciatedToSale);
}

void ADepre::McrsRealDisposal() {
    if (saleYear_ == 1) {
        yearFraction_ =
            record_.Convention() == 'Y' ? ToAmount(Real(saleMonth_) / 12.0 - 1.0 / 24.0) : ToAmount(Real(saleMonth_ - 1) / 12.0);
    }
    if (record_.DeprMethod == kSl) {
        yearResult_ = ToAmount(Real(maxDepr_) / Real(record_.Period) * Real(yearFraction_));
    } else {
        yearResult_ = ToAmount(Real(maxDepr_ - record_.PrevDepr) * AnnualRate() * Real(yearFraction_));
    }
    SetStatus(kStatusDepreciatedToSale);
}

}  // namespace tallymar
