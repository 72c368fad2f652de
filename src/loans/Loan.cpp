#include "loans/Loan.h"

#include <algorithm>

#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Rounding.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

// The shown form has commas, which no number may have.
std::string NoCommas(std::string_view text) {
    std::string plain(Trim(text));
    std::erase(plain, ',');
    return plain;
}

[[noreturn]] void Refuse(LoanBox box, std::string_view text, std::string_view what) {
    throw PlatformError(Failure::TypeMismatch,
                        std::string(InfoOf(box).Label) + ": \"" + std::string(text) + "\" is no " + std::string(what));
}

LoanBox BoxOf(LoanVariable variable) {
    switch (variable) {
        case LoanVariable::Payment:
            return LoanBox::Payment;
        case LoanVariable::Period:
            return LoanBox::Periods;
        case LoanVariable::Rate:
            return LoanBox::Rate;
        case LoanVariable::Loan:
            break;
    }
    return LoanBox::Amount;
}

}  // namespace

Loan::Loan() {
    std::transform(kLoanBoxes.begin(), kLoanBoxes.end(), texts_.begin(), [](const LoanBoxInfo& info) { return info.Default; });
}

void Loan::SetText(LoanBox box, std::string_view text) {
    const auto place = static_cast<std::size_t>(box);
    if (texts_.at(place) == text) return;
    texts_[place] = text;
    exact_[place].reset();
}

void Loan::SetTexts(LoanTexts texts) {
    *this = Loan();
    texts_ = std::move(texts);
}

CurrencyAmount Loan::Number(LoanBox box) const {
    if (const auto& exact = exact_.at(static_cast<std::size_t>(box))) return *exact;
    const std::string plain = NoCommas(Text(box));
    if (plain.empty()) return {};
    const auto number = CurrencyAmount::Parse(plain);
    if (!number) Refuse(box, Text(box), "number");
    return *number;
}

std::int16_t Loan::Count(LoanBox box) const {
    try {
        return ToInteger(Number(box).ToDouble());
    } catch (const PlatformError& failure) {
        if (failure.Code() != Failure::Overflow) throw;
        Refuse(box, Text(box), "number up to 32,767");
    }
}

LoanTerms Loan::Terms() const {
    return {.Amount = Number(LoanBox::Amount),
            .Periods = Count(LoanBox::Periods),
            .PerYear = Count(LoanBox::PerYear),
            .DaysToFirst = Count(LoanBox::DaysToFirst),
            .Payment = Number(LoanBox::Payment),
            .Rate = Number(LoanBox::Rate),
            .ToBalloon = Count(LoanBox::ToBalloon)};
}

LoanBox Loan::Solve() {
    Loan solved = *this;
    LoanTerms terms = Terms();
    auto variable = BlankVariable(terms);
    if (!variable) {
        variable = lastSolved_.value_or(LoanVariable::Payment);
        solved.SetText(BoxOf(*variable), "0");
        terms = solved.Terms();
    }
    solved.note_ = SolveFor(*variable, terms);
    solved.lastSolved_ = variable;
    solved.UpdateText(terms);
    *this = std::move(solved);
    return BoxOf(*variable);
}

void Loan::UpdateText(const LoanTerms& terms) {
    Show(LoanBox::Amount, terms.Amount, pictures::kTotal);
    Show(LoanBox::Periods, CurrencyAmount::FromInteger(terms.Periods), pictures::kLongCount);
    Show(LoanBox::PerYear, CurrencyAmount::FromInteger(terms.PerYear), pictures::kLongCount);
    Show(LoanBox::DaysToFirst, CurrencyAmount::FromInteger(terms.DaysToFirst), pictures::kLongCount);
    Show(LoanBox::Payment, terms.Payment, pictures::kTotal);
    Show(LoanBox::Rate, terms.Rate, pictures::kLoanRate);
    Show(LoanBox::ToBalloon, CurrencyAmount::FromInteger(terms.ToBalloon), pictures::kLongCount);
    Show(LoanBox::TotalInterest, terms.TotalInterest(), pictures::kTotal);
    Show(LoanBox::TotalPaid, terms.TotalPaid(), pictures::kTotal);
}

void Loan::Show(LoanBox box, CurrencyAmount value, std::string_view picture) {
    const auto place = static_cast<std::size_t>(box);
    texts_[place] = Format(value, picture);
    exact_[place] = value;
}

LoanSchedule Loan::Schedule() const {
    const auto first = FirstDue();
    if (!first) {
        throw PlatformError(Failure::InvalidCall,
                            std::string(InfoOf(LoanBox::FirstDue).Label) + ": \"" + Text(LoanBox::FirstDue) + "\" is no date");
    }
    return MakeLoanSchedule(Terms(), *first);
}

}  // namespace tallymar
