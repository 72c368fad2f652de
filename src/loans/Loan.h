#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "loans/LoanSchedule.h"
#include "loans/LoanSolve.h"

namespace tallymar {

// The boxes of the loan calculator, in the order of a loan file.
enum class LoanBox { Name, Amount, Periods, PerYear, DaysToFirst, Payment, Rate, ToBalloon, FirstDue, TotalInterest, TotalPaid };
inline constexpr std::size_t kLoanBoxCount = 11;

using LoanTexts = std::array<std::string, kLoanBoxCount>;

struct LoanBoxInfo {
    LoanBox Box;
    std::string_view Control;  // the name of its entry control and in the tool's output
    std::string_view Label;
    std::string_view Default;
    std::string_view Option;  // of the command line tool; empty for results
    std::string_view Hint;
};

inline constexpr std::array<LoanBoxInfo, kLoanBoxCount> kLoanBoxes = {{
    {LoanBox::Name, "Text16", "Name on top of schedule", "", "--name", "Printed in the head of each page"},
    {LoanBox::Amount, "Text2", "Amortization amount", "", "--amount", "The amount of the loan; blank to solve for it"},
    {LoanBox::Periods, "Text3", "Amortization period", "36", "--periods", "The number of payments; blank to solve for it"},
    {LoanBox::PerYear, "Text4", "Number of periods per year", "12", "--per-year",
     "12 for months, 24 for half months, 26 for fortnights, 4, 2 or 1 for longer ones"},
    {LoanBox::DaysToFirst, "Text5", "Days to first payment", "30", "--days",
     "Days from the loan to its first payment; 30 is one whole period, except with 24 or 26 a year"},
    {LoanBox::Payment, "Text6", "Payment each period", "", "--payment",
     "Blank to solve for it; below 0 it is added to savings, 0 lets the amount grow"},
    {LoanBox::Rate, "Text7", "Interest Rate ( % )", "", "--rate", "Percent a year; blank to solve for it"},
    {LoanBox::ToBalloon, "Text8", "Payments to balloon", "36", "--balloon",
     "Payments on the schedule; fewer than the amortization period leave a final payment"},
    {LoanBox::FirstDue, "Text9", "1st Payment Due Date", "01/01/2003", "--first",
     "Month, day and year; years 21 to 99 without a century are 19xx"},
    {LoanBox::TotalInterest, "Text10", "Total interest paid", "", "", "Total amount paid less the loan"},
    {LoanBox::TotalPaid, "Text14", "Total amount paid", "", "", "The payment times the number of periods"},
}};

constexpr const LoanBoxInfo& InfoOf(LoanBox box) {
    return kLoanBoxes[static_cast<std::size_t>(box)];
}

// The longest text of a box.
inline constexpr std::size_t kLongestLoanText = 255;

// A loan as it stands in the boxes of the calculator. A value that was solved for keeps its four decimals beside the two that its
// box shows, for as long as that text stays.
class Loan {
 public:
    Loan();  // the calculator's defaults

    const LoanTexts& Texts() const { return texts_; }
    const std::string& Text(LoanBox box) const { return texts_.at(static_cast<std::size_t>(box)); }
    void SetText(LoanBox box, std::string_view text);
    // Another loan: what was solved for is forgotten.
    void SetTexts(LoanTexts texts);
    void NullText() { SetTexts({}); }

    // The terms as numbers; blank is 0. Failures: TypeMismatch, which names the box, for what is no number of its kind.
    LoanTerms Terms() const;
    std::optional<DueDate> FirstDue() const { return ReadDueDate(Text(LoanBox::FirstDue)); }

    // Solves for what is blank or, when nothing is, for what was solved for last (at first the payment), and refreshes all
    // numbers. Returns the box that was computed. Failures: those of Terms and SolveFor; the boxes are then as they were.
    LoanBox Solve();
    // What the last Solve had to say of its result; may be empty.
    std::string_view Note() const { return note_; }

    // The course of the loan in its boxes; nothing is solved for. Failures: those of Terms and MakeLoanSchedule; InvalidCall when
    // the due date is none.
    LoanSchedule Schedule() const;

 private:
    void UpdateText(const LoanTerms& terms);
    void Show(LoanBox box, CurrencyAmount value, std::string_view picture);
    CurrencyAmount Number(LoanBox box) const;
    std::int16_t Count(LoanBox box) const;

    LoanTexts texts_;
    std::array<std::optional<CurrencyAmount>, kLoanBoxCount> exact_;  // of the texts that Show has put there
    std::optional<LoanVariable> lastSolved_;
    std::string_view note_;
};

}  // namespace tallymar
