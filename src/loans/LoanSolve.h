#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/runtime/CurrencyAmount.h"

namespace tallymar {

// What is known of a loan. 0 stands for what is not.
struct LoanTerms {
    CurrencyAmount Amount;
    std::int16_t Periods = 0;
    std::int16_t PerYear = 0;
    std::int16_t DaysToFirst = 0;
    CurrencyAmount Payment;  // each period; 0 or less: nothing is paid back, so much is added
    CurrencyAmount Rate;     // percent a year
    std::int16_t ToBalloon = 0;

    CurrencyAmount TotalPaid() const { return Payment * CurrencyAmount::FromInteger(Periods); }
    CurrencyAmount TotalInterest() const { return TotalPaid() - Amount; }
};

enum class LoanVariable { Payment, Period, Rate, Loan };

// The variable that is blank and so the one to solve for; the first in the order Payment, Period, Rate, Loan. Of an amount or
// percentage only the whole part counts: a payment below 1.00 and a rate below 1% are blank.
std::optional<LoanVariable> BlankVariable(const LoanTerms& terms);

// Puts the value of the variable in its place. What is said comes back when the result needs a word, such as why there is none;
// empty when it does not.
// Failures: InvalidCall when no rate fits, or the number of periods per year is needed and is not above 0; Overflow.
std::string_view SolveFor(LoanVariable variable, LoanTerms& terms);

// Halves go up.
CurrencyAmount RoundToCents(CurrencyAmount amount);

}  // namespace tallymar
