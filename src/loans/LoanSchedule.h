#pragma once

#include <vector>

#include "loans/DueDates.h"
#include "loans/LoanSolve.h"

namespace tallymar {

struct LoanPayment {
    int Number = 0;
    DueDate Due;
    CurrencyAmount Before;     // the balance
    CurrencyAmount Principal;  // the payment less interest, and a residue taken along; below 0 where the balance grows
    CurrencyAmount Interest;
    CurrencyAmount TotalInterest;  // of all payments up to this one
    CurrencyAmount After;

    // What the balance went down by, in whole cents: of all payments and what is left, the loan to the cent. A payment that was
    // solved for has four decimals, and so has its Principal, which lies within half a cent of this.
    CurrencyAmount Reduction() const { return Before - After; }
};

// COMPAT: a year adds up Principal and is rounded when it is shown, so that it may differ by cents from its lines.
struct LoanYear {
    int Year = 0;
    CurrencyAmount Principal;
    CurrencyAmount Interest;
};

// The course of a loan or, when the payment is 0 or less, of a savings plan that starts with the amount and is added to.
struct LoanSchedule {
    bool IsAdditions = false;
    std::vector<LoanPayment> Payments;
    std::vector<LoanYear> Years;  // calendar years with a payment
    bool HasBalloon = false;      // it was to end before the loan does

    CurrencyAmount Balance() const { return Payments.empty() ? CurrencyAmount() : Payments.back().After; }
    CurrencyAmount TotalInterest() const { return Payments.empty() ? CurrencyAmount() : Payments.back().TotalInterest; }
};

// One payment more than there are up to the balloon, for a residue; fewer where the balance is 0 before. A payment that leaves no
// more than 2% of itself takes that along.
//
// Interest is the exact product of balance, rate and time rounded once to the cent, halves up.
// Failures: InvalidCall when the periods per year are not above 0; Overflow, also past the year 9999.
LoanSchedule MakeLoanSchedule(const LoanTerms& terms, const DueDate& first);

}  // namespace tallymar
