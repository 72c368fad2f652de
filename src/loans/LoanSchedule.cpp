#include "loans/LoanSchedule.h"

#include <limits>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

__extension__ using Wide = __int128;

constexpr int kDaysAYear = 365;
constexpr int kDaysOfMonth = 30;  // to the first payment: no more and no less than a period
constexpr int kTwoWeeks = 14;

// A part of a year.
struct YearPart {
    int Parts;
    int Of;
};

YearPart Days(int days) {
    return {days, kDaysAYear};
}

Wide Product(Wide a, Wide b) {
    Wide product = 0;
    if (__builtin_mul_overflow(a, b, &product)) throw PlatformError(Failure::Overflow);
    return product;
}

// balance x percent / 100 x part of the year, in whole cents.
CurrencyAmount InterestOf(CurrencyAmount balance, CurrencyAmount percent, const YearPart& part) {
    const Wide numerator = Product(Product(balance.TenThousandths(), percent.TenThousandths()), part.Parts);
    const Wide denominator = Wide(CurrencyAmount::kScale) * CurrencyAmount::kScale * part.Of;
    const Wide half = denominator / 2;
    Wide cents = (numerator + half) / denominator;
    if ((numerator + half) % denominator < 0) --cents;
    constexpr Wide kCent = CurrencyAmount::kScale / 100;
    if (cents > std::numeric_limits<std::int64_t>::max() / kCent || cents < std::numeric_limits<std::int64_t>::min() / kCent) {
        throw PlatformError(Failure::Overflow);
    }
    return CurrencyAmount::FromTenThousandths(static_cast<std::int64_t>(cents * kCent));
}

// What part of a year a payment carries interest for. previous: the due date before it, null for the first.
//
// COMPAT: periods of a month and longer are parts of a year whatever their days, unless the first one is said to have others
// than 30; half months and fortnights count days.
YearPart PartOfYear(const LoanTerms& terms, const DueDate* previous, const DueDate& due) {
    const bool isFirst = previous == nullptr;
    switch (terms.PerYear) {
        case 26:
            return Days(isFirst ? terms.DaysToFirst : kTwoWeeks);
        case 24:
            return Days(isFirst ? terms.DaysToFirst : DaysFromTo(*previous, due));
        default:
            return isFirst && terms.DaysToFirst != kDaysOfMonth ? Days(terms.DaysToFirst) : YearPart{1, terms.PerYear};
    }
}

bool IsResidue(CurrencyAmount balance, CurrencyAmount payment) {
    return Wide(balance.TenThousandths()) * 100 <= Wide(payment.TenThousandths()) * 2;
}

void AddToYear(const LoanPayment& payment, std::vector<LoanYear>& years) {
    if (years.empty() || years.back().Year != payment.Due.Year) years.push_back({payment.Due.Year, {}, {}});
    years.back().Principal += payment.Principal;
    years.back().Interest += payment.Interest;
}

}  // namespace

LoanSchedule MakeLoanSchedule(const LoanTerms& terms, const DueDate& first) {
    if (terms.PerYear <= 0) throw PlatformError(Failure::InvalidCall, "Number of periods per year: 1 or more is needed");
    LoanSchedule schedule;
    schedule.IsAdditions = terms.Payment <= CurrencyAmount();
    schedule.HasBalloon = terms.ToBalloon < terms.Periods;
    DueDates dates(first, terms.PerYear);
    LoanPayment payment;
    payment.After = terms.Amount;
    for (int number = 1; number <= terms.ToBalloon + 1 && !payment.After.IsZero(); ++number) {
        const DueDate previous = dates.Current();
        if (number > 1) dates.MoveNext();
        payment.Number = number;
        payment.Due = dates.Current();
        payment.Before = payment.After;
        payment.Interest =
            InterestOf(payment.Before, terms.Rate, PartOfYear(terms, number > 1 ? &previous : nullptr, payment.Due));
        payment.Principal = terms.Payment - payment.Interest;
        payment.After = RoundToCents(payment.Before - payment.Principal);
        if (IsResidue(payment.After, terms.Payment)) {
            payment.Principal += payment.After;
            payment.After = {};
        }
        payment.TotalInterest += payment.Interest;
        AddToYear(payment, schedule.Years);
        schedule.Payments.push_back(payment);
    }
    return schedule;
}

}  // namespace tallymar
