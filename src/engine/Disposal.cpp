#include "store/Disposal.h"
#include "engine/ADepre.h"
#include "store/Vocabularies.h"

namespace tallymar {

void ADepre::EvaluateDisposed() {
    disposed_ = CheckDisposed(record_);
}

// Every check runs whatever the earlier ones found, so that the last status set is the one that stays.
bool ADepre::IsValid() {
    bool valid = true;
    if (record_.InService.IsNone()) {
        SetStatus(kStatusInvalidInService);
        valid = false;
    }
    if (asOfDate_.IsNone()) valid = false;
    if (record_.Period < Units(1)) {
        SetStatus(kStatusPeriodIsZero);
        valid = false;
    }
    if (record_.DeprType == kXxxx || record_.DeprType == kStck || record_.DeprType == kColl) {
        record_.SwitchBasis = CurrencyAmount();
        MarkNonDepreciable();
        valid = false;
    }
    if (asOfDate_ < record_.InService) {
        SetStatus(kStatusBeforeInService);
        valid = false;
    }
    return valid;
}

void ADepre::EvaluateDisposal() {
    if (record_.DateSold.IsNone()) return SetStatus(kStatusInvalidSoldDate);
    const int soldYear = record_.DateSold.Year();
    const int soldMonth = record_.DateSold.Month();

    if (asOfMonth_ == 12 && asOfDate_.Day() == 31 && soldYear == asOfYear_) {
        saleYear_ = 1;
        saleMonth_ = soldMonth;
    } else {
        saleMonth_ = 12 - (asOfMonth_ - soldMonth);
        saleYear_ = asOfYear_ + 1 - soldYear;
        if (saleMonth_ > 12) {
            saleMonth_ -= 12;
            --saleYear_;
        }
        if (saleYear_ > 1) {
            SetStatus(kStatusSoldNoDepr);
            yearResult_ = CurrencyAmount();
        }
    }

    if (soldYear > asOfYear_ || (soldYear == asOfYear_ && soldMonth > asOfMonth_)) {
        disposed_ = false;  // the sale belongs to a later fiscal year
        return;
    }
    if (record_.IsRealProperty() && record_.DeprType == kAcrs) return;
    if (record_.DeprType == kMcrs || saleYear_ <= 0) return;
    if (record_.Convention() == 'Y') {
        yearResult_ = CurrencyAmount();
        SetStatus(kStatusSoldNoDepr);
    } else if (record_.Convention() == 'N') {
        SetStatus(kStatusSoldNoDepr);
    }
}

}  // namespace tallymar
