#include "loans/LoanSolve.h"

#include <cmath>

#include "platform/runtime/Annuity.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

constexpr int kMostPeriods = 1000;
constexpr int kMostPeriodsOfRate = 250;

// Of one period.
double PeriodRate(const LoanTerms& terms) {
    return terms.Rate.ToDouble() / 100 / terms.PerYear;
}

// COMPAT: a payment that cannot be computed stays as it was, and that is no failure.
std::string_view SolvePayment(LoanTerms& terms) {
    if (terms.Periods <= 0 || terms.PerYear <= 0) {
        return "The payment cannot be computed without an amortization period and a number of periods per year.";
    }
    const double r = PeriodRate(terms);
    const double factor = 1 - 1 / std::pow(1 + r, terms.Periods);
    if (terms.Rate.IsZero() && factor == 0) {
        terms.Payment = CurrencyAmount::FromDouble(std::floor(terms.Amount.ToDouble() / terms.Periods * 100 + 0.5) / 100);
    } else if (factor > 0) {
        terms.Payment = CurrencyAmount::FromDouble(terms.Amount.ToDouble() * r / factor);
    } else {
        return "The payment cannot be computed at this interest rate.";
    }
    return {};
}

// By going through the payments: the last one is that which leaves less than a fifth of a payment.
std::string_view SolvePeriods(LoanTerms& terms) {
    constexpr CurrencyAmount kFifth = CurrencyAmount::FromTenThousandths(2000);
    const double r = PeriodRate(terms);
    const CurrencyAmount fifth = terms.Payment * kFifth;
    CurrencyAmount balance = terms.Amount;
    for (std::int16_t count = 1; count <= kMostPeriods; ++count) {
        const double interest = r * balance.ToDouble();
        const CurrencyAmount principal = CurrencyAmount::FromDouble(terms.Payment.ToDouble() - interest);
        balance = RoundToCents(balance - principal);
        if (balance - fifth < CurrencyAmount()) {
            terms.Periods = count;
            return {};
        }
        // A payment that does not cover the interest now never will; going on would only lead past the largest amount.
        if (r >= 0 && principal <= CurrencyAmount()) break;
    }
    terms.Periods = kMostPeriods;
    return "The payment does not pay the loan off within 1,000 periods.";
}

std::string_view SolveRate(LoanTerms& terms) {
    terms.Rate = {};
    if (terms.Periods > kMostPeriodsOfRate) return "The interest rate is computed for 250 periods at most.";
    const double rate = Rate(terms.Periods, -terms.Payment.ToDouble(), terms.Amount.ToDouble());
    terms.Rate = CurrencyAmount::FromDouble(rate * terms.PerYear * 100);
    return terms.Rate < CurrencyAmount() ? "The payments come to less than the loan." : "";
}

std::string_view SolveLoan(LoanTerms& terms) {
    terms.Amount = CurrencyAmount::FromDouble(PV(PeriodRate(terms), terms.Periods, -terms.Payment.ToDouble()));
    return {};
}

}  // namespace

CurrencyAmount RoundToCents(CurrencyAmount amount) {
    return CurrencyAmount::FromTenThousandths(WholePartOfProduct(amount, Units(100)) * (CurrencyAmount::kScale / 100));
}

std::optional<LoanVariable> BlankVariable(const LoanTerms& terms) {
    if (terms.Payment.WholePart() == 0) return LoanVariable::Payment;
    if (terms.Periods == 0) return LoanVariable::Period;
    if (terms.Rate.WholePart() == 0) return LoanVariable::Rate;
    if (terms.Amount.WholePart() == 0) return LoanVariable::Loan;
    return std::nullopt;
}

std::string_view SolveFor(LoanVariable variable, LoanTerms& terms) {
    if (variable == LoanVariable::Payment) return SolvePayment(terms);
    if (terms.PerYear <= 0) throw PlatformError(Failure::InvalidCall, "Number of periods per year: 1 or more is needed");
    if (variable == LoanVariable::Period) return SolvePeriods(terms);
    return variable == LoanVariable::Rate ? SolveRate(terms) : SolveLoan(terms);
}

}  // namespace tallymar
