#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/Date.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

// The numbered lines of a form, from 0 on. A number beyond the last fails with Failure::SubscriptOutOfRange.
class FormLines {
 public:
    explicit FormLines(int last) : amounts_(static_cast<std::size_t>(last) + 1) {}

    CurrencyAmount& operator[](int line) { return amounts_[Checked(line)]; }
    const CurrencyAmount& operator[](int line) const { return amounts_[Checked(line)]; }
    int Last() const { return static_cast<int>(amounts_.size()) - 1; }

 private:
    std::size_t Checked(int line) const {
        if (line < 0 || line > Last()) throw PlatformError(Failure::SubscriptOutOfRange);
        return static_cast<std::size_t>(line);
    }

    std::vector<CurrencyAmount> amounts_;
};

// A step of a form's computation: the line that it sets, and from what. The steps run in the order of their table.
template <typename Form>
struct LineStep {
    int Line;
    CurrencyAmount (*Value)(const Form& form);
};

template <typename Form, typename Table>
void RunSteps(const Table& steps, const Form& form, FormLines& lines) {
    for (const LineStep<Form>& step : steps) lines[step.Line] = step.Value(form);
}

inline CurrencyAmount NotBelowZero(CurrencyAmount amount) {
    return std::max(amount, CurrencyAmount());
}

// To the dollar, halves upward (-2.5 is -2), where the company's Round says so.
class FormRounding {
 public:
    explicit FormRounding(std::string_view roundText) : on_(roundText == "Y") {}

    CurrencyAmount operator()(CurrencyAmount amount) const {
        return on_ ? CurrencyAmount::FromInteger((amount + CurrencyAmount::FromTenThousandths(5000)).WholePart()) : amount;
    }
    void Apply(CurrencyAmount& amount) const { amount = (*this)(amount); }
    bool IsOn() const { return on_; }

 private:
    bool on_;
};

// The date as the forms print it, mm/dd/yyyy; nothing for date 0.
std::string FormDate(Date date);

// The first `count` characters.
inline std::string FirstOf(std::string_view text, std::size_t count) {
    return std::string(text.substr(0, count));
}

}  // namespace tallymar
