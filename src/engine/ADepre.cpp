#include "engine/ADepre.h"

#include <algorithm>
#include <utility>

#include "engine/EngineMath.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

constexpr int kBookkeeping = 3;
constexpr std::size_t kStatusTextRoom = 96;  // more than the longest text, so that no later status allocates

}  // namespace

ADepre::ADepre(std::filesystem::path tableFolder) : tableFolder_(std::move(tableFolder)) {
    statusText_.reserve(kStatusTextRoom);
}

void ADepre::ComputeDepreciation(AssetRecord& record, Date asOfDate, bool useMidQuarter, int book) {
    record_.TakeFrom(record, book);
    asOfDate_ = asOfDate;
    useMidQuarter_ = useMidQuarter;
    statusText_.clear();
    statusCode_ = 0;

    ComputeYear();
    record_.CurrDepr = yearResult_;
    if (ComputeMonth > 0 && book == kBookkeeping) ComputeMonthOfBookkeeping();

    record_.GiveTo(record, book);
}

void ADepre::ComputeYear() {
    EvaluateDisposed();
    yearResult_ = CurrencyAmount();
    if (!IsValid()) return;

    yearFraction_ = Units(1);
    asOfYear_ = asOfDate_.Year();
    asOfMonth_ = asOfDate_.Month();
    CountYears();
    record_.YearThru = static_cast<std::int16_t>(yearOfLife_ - 1);
    saleYear_ = 0;
    saleMonth_ = 0;
    if (disposed_) EvaluateDisposal();
    ComputeMaxDepr();
    if (yearOfLife_ == 1) StampConvention();

    ComputeByType();
    ApplyAutoLimits();
    if (saleYear_ == 1) {
        if (record_.Auto) yearResult_ = std::min(yearResult_, record_.DeprLimit);
        SetStatus(kStatusDepreciatedToSale);
    } else if (saleYear_ > 1) {
        yearResult_ = CurrencyAmount();
    }
    CapAndRound();
}

void ADepre::StampConvention() {
    if (useMidQuarter_) {
        record_.IRSConvUsed = "Q";
    } else if (record_.Convention() != 'N' && record_.Convention() != 'M') {
        record_.IRSConvUsed = "Y";
    }
}

void ADepre::ComputeByType() {
    switch (record_.DeprType) {
        case kMcrs:
            return ComputeMcrs();
        case kAcrs:
        case kAcam:
            return ComputeAcrs();
        case kMacs:
            return ComputeFromTable();
        case kAmrt:
        case kGenl:
        case kAds:
        case kAdr:
            return ComputeFormula();
        default:
            return SetStatus(kStatusIncorrectType);
    }
}

void ADepre::CapAndRound() {
    yearResult_ = std::min(yearResult_, maxDepr_ - record_.PrevDepr);
    yearResult_ = std::max(yearResult_, CurrencyAmount());
    RoundAmount(yearResult_, RoundText);
}

// The amount of one month is the same whichever month of the year is asked for; the first year's Section 179 and additional
// amounts are spread over the months in service.
void ADepre::ComputeMonthOfBookkeeping() {
    EvaluateDisposed();
    CountYears();
    CurrencyAmount month;
    if (yearResult_ > CurrencyAmount()) {
        if (yearOfLife_ > 1) {
            month = ToAmount(Real(yearResult_) / 12.0);
        } else if (yearOfLife_ == 1 && serviceMonth_ >= 1 && serviceMonth_ <= ComputeMonth) {
            const double rest = Real(12 - (serviceMonth_ - 1));
            const CurrencyAmount section179 = ToAmount(Real(record_.Section179) / rest);
            const CurrencyAmount additional = ToAmount(Real(record_.AddlDepr) / rest);
            month = ToAmount(Real(yearResult_) / rest) + section179 + additional;
        }
    }
    RoundAmount(month, RoundText);
    record_.CurrDepr = month;
}

void ADepre::CountYears() {
    const YearMonthCount count = YearsAndMonths(record_.InService, asOfDate_);
    yearOfLife_ = count.Years;
    serviceMonth_ = count.Months;
}

void ADepre::SetStatus(DeprStatus status) {
    statusCode_ = status;
    PutDeprStatusText(status, record_.Abandoned, record_.DateSold, record_.InService, statusText_);
}

void ADepre::MarkNonDepreciable() {
    yearResult_ = CurrencyAmount();
    record_.IRSConvUsed = "X";
    SetStatus(kStatusNonDepreciable);
}

double ADepre::AnnualRate() const {
    return Real(PercentOf(Units(record_.DBPercent))) / Real(record_.Period);
}

}  // namespace tallymar
