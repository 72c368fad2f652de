#pragma once

#include <memory>
#include <string_view>

#include "loans/Loan.h"
#include "platform/page/Delivery.h"
#include "platform/prompts/Prompts.h"

namespace tallymar {

// Draws the schedule on pages of fixed-pitch type, portrait letter paper; details take its payments, with LoanPayment::Reduction
// as their principal, so that a table of them adds up to the loan.
void PrintSchedule(const LoanSchedule& schedule, const LoanTerms& terms, std::string_view name, PageDocument& v,
                   DetailTable& details);

// The command of the Print button: asks, and makes the document. An empty payment box is solved for first, as a borrower's
// schedule without a payment would be a savings plan; "0" is one. Null when there is nothing to print or the answer is No.
// Failures: those of Loan::Solve and Loan::Schedule; InvalidCall when the payment cannot be computed. The boxes are then as they
// were, the payment still empty.
std::shared_ptr<PrintedDocument> PrintLoan(Loan& loan, Prompts& prompts);

}  // namespace tallymar
