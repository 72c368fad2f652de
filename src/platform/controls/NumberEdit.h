#pragma once

#include "platform/controls/EntryEdit.h"
#include "platform/runtime/CurrencyAmount.h"

namespace tallymar {

// Entry of a number: digits, one point when it has decimals, a sign in front when the limits go below zero, commas between
// thousands that come and go by themselves. The whole entry is selected when the field gets the focus, so that typing replaces
// it. A paste may hold commas, blanks, a dollar sign, or parentheses for a negative.
//
// A digit that would lead past a limit is refused. Where the lower limit is above zero a number still being typed may lie below
// it; on leaving, such an entry is taken back. An empty field is 0, and 0 can always be entered: it stands for "none".
class NumberEdit : public EntryEdit {
    Q_OBJECT

 public:
    struct Limits {
        CurrencyAmount Minimum;
        CurrencyAmount Maximum;
        int Decimals = 0;  // 0 to 4
        bool Commas = false;
    };

    const Limits& GetLimits() const { return limits_; }
    // For entries from here on; what stands in the field stays.
    void SetMaximum(CurrencyAmount maximum) { limits_.Maximum = maximum; }

 protected:
    NumberEdit(const Limits& limits, QWidget* parent);

    CurrencyAmount Amount() const;
    // Shown rounded to the field's decimals, halves away from zero.
    void SetAmount(CurrencyAmount amount);

    QValidator::State Check(QString& text, int& caret) const override;
    QString WhyRefused() const override;
    void Enter() override;
    void Leave() override;
    QString WidestText() const override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    QString Shown(CurrencyAmount amount) const;
    QString Grouped(const QString& plain) const;
    bool IsOutside(CurrencyAmount amount) const;
    void NoteChange();

    Limits limits_;
    CurrencyAmount noted_;    // the value that Changed was last sent for
    CurrencyAmount entered_;  // the value when the field got the focus
    mutable QString whyRefused_;
};

// Entry of an amount, percentage or life.
class sidbEdit : public NumberEdit {
    Q_OBJECT

 public:
    // -99,999,999.99 to 99,999,999.99
    static Limits Money();

    explicit sidbEdit(const Limits& limits, QWidget* parent = nullptr) : NumberEdit(limits, parent) {}

    CurrencyAmount Value() const { return Amount(); }
    void SetValue(CurrencyAmount value) { SetAmount(value); }
};

// Entry of a whole number, without commas.
class silgEdit : public NumberEdit {
    Q_OBJECT

 public:
    silgEdit(int minimum, int maximum, QWidget* parent = nullptr);

    int Value() const { return static_cast<int>(Amount().WholePart()); }
    void SetValue(int value) { SetAmount(CurrencyAmount::FromInteger(value)); }
};

}  // namespace tallymar
