#include "platform/controls/NumberEdit.h"

#include <array>
#include <cstdint>
#include <optional>

#include <QKeyEvent>

namespace tallymar {

namespace {

constexpr QChar kComma = u',';
constexpr QChar kPoint = u'.';
constexpr QChar kMinus = u'-';
constexpr std::array<std::int64_t, 5> kStepOfDecimals = {10000, 1000, 100, 10, 1};  // the last shown digit, in ten-thousandths

bool IsAsciiDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

// The digits, point and sign of a text; nullopt when something else stands in it. `caret` moves along.
std::optional<QString> Plain(const QString& text, int& caret) {
    QString plain;
    int place = 0;
    bool negative = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == kComma || c == u'$' || c == u' ' || c == u')') continue;
        if (c == u'(') {
            negative = true;
            continue;
        }
        if (!IsAsciiDigit(c) && c != kPoint && c != kMinus) return std::nullopt;
        if (i < caret) ++place;
        plain += c;
    }
    if (negative) {
        plain.prepend(kMinus);
        ++place;
    }
    caret = place;
    return plain;
}

CurrencyAmount Parsed(QString plain) {
    if (plain.startsWith(kPoint)) plain.prepend(u'0');
    if (plain.startsWith(u"-.")) plain.insert(1, u'0');
    if (plain.endsWith(kPoint)) plain.chop(1);
    return CurrencyAmount::Parse(plain.toStdString()).value_or(CurrencyAmount());
}

}  // namespace

NumberEdit::NumberEdit(const Limits& limits, QWidget* parent) : EntryEdit(parent), limits_(limits) {
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    SelectAllOnClick(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    ShowText(Shown(CurrencyAmount()));
    connect(this, &QLineEdit::textChanged, this, &NumberEdit::NoteChange);
}

CurrencyAmount NumberEdit::Amount() const {
    int caret = 0;
    const std::optional<QString> plain = Plain(text(), caret);
    return plain ? Parsed(*plain) : CurrencyAmount();
}

void NumberEdit::SetAmount(CurrencyAmount amount) {
    ShowText(Shown(amount));
    entered_ = Amount();  // another row may come under a focused field
}

// Zero stands for an empty field, whatever the limits.
bool NumberEdit::IsOutside(CurrencyAmount amount) const {
    return !amount.IsZero() && (amount < limits_.Minimum || amount > limits_.Maximum);
}

void NumberEdit::NoteChange() {
    const CurrencyAmount amount = Amount();
    if (amount == noted_) return;  // only the commas or the zeros after the point are others
    // The first digits of a year are not its value yet, and must not be stored when the form turns to another row.
    if (hasFocus() && IsOutside(amount)) return;
    noted_ = amount;
    emit Changed();
}

QString NumberEdit::Shown(CurrencyAmount amount) const {
    const std::int64_t step = kStepOfDecimals[static_cast<std::size_t>(limits_.Decimals)];
    const bool below = amount.TenThousandths() < 0;
    const std::uint64_t count =
        below ? 0 - static_cast<std::uint64_t>(amount.TenThousandths()) : static_cast<std::uint64_t>(amount.TenThousandths());
    const std::uint64_t steps = (count + static_cast<std::uint64_t>(step) / 2) / static_cast<std::uint64_t>(step);
    QString digits = QString::number(steps).rightJustified(limits_.Decimals + 1, u'0');
    if (limits_.Decimals > 0) digits.insert(digits.size() - limits_.Decimals, kPoint);
    if (below && steps != 0) digits.prepend(kMinus);
    return Grouped(digits);
}

QString NumberEdit::Grouped(const QString& plain) const {
    if (!limits_.Commas) return plain;
    QString grouped = plain;
    const qsizetype start = grouped.startsWith(kMinus) ? 1 : 0;
    const qsizetype point = grouped.indexOf(kPoint);
    for (qsizetype i = (point < 0 ? grouped.size() : point) - 3; i > start; i -= 3) grouped.insert(i, kComma);
    return grouped;
}

QValidator::State NumberEdit::Check(QString& text, int& caret) const {
    const qsizetype lengthBefore = TextBefore().size();
    whyRefused_.clear();
    const std::optional<QString> read = Plain(text, caret);
    if (!read) return QValidator::Invalid;
    const QString& plain = *read;
    const qsizetype point = plain.indexOf(kPoint);
    if (plain.lastIndexOf(kMinus) > 0 || plain.lastIndexOf(kPoint) != point) return QValidator::Invalid;
    if (plain.startsWith(kMinus) && limits_.Minimum >= CurrencyAmount()) return QValidator::Invalid;
    if (point >= 0 && (limits_.Decimals == 0 || plain.size() - point - 1 > limits_.Decimals)) return QValidator::Invalid;
    // Beyond twelve digits no limit of any field lies.
    if ((point < 0 ? plain.size() : point) > 13) return QValidator::Invalid;

    const CurrencyAmount amount = Parsed(plain);
    const bool tooHigh = amount > limits_.Maximum;
    const bool tooLow = amount < limits_.Minimum;
    // Below a limit above zero more digits may follow. Taking digits away from a stored value outside the limits is a way back.
    const bool onItsWay = tooLow && amount >= CurrencyAmount();
    if ((tooHigh || (tooLow && !onItsWay)) && text.size() >= lengthBefore) {
        whyRefused_ = tooHigh ? tr("Above the limit of %1").arg(Shown(limits_.Maximum))
                              : tr("Below the limit of %1").arg(Shown(limits_.Minimum));
        return QValidator::Invalid;
    }

    const QString grouped = Grouped(plain);
    int left = caret;
    int place = 0;
    while (left > 0 && place < grouped.size()) {
        if (grouped[place] != kComma) --left;
        ++place;
    }
    text = grouped;
    caret = place;
    return QValidator::Acceptable;
}

QString NumberEdit::WhyRefused() const {
    return whyRefused_;
}

void NumberEdit::Enter() {
    entered_ = Amount();
}

void NumberEdit::Leave() {
    const CurrencyAmount amount = Amount();
    if (IsOutside(amount) && amount != entered_) {
        SetAmount(entered_);
        emit Refused(tr("%1 is not between %2 and %3.").arg(Shown(amount), Shown(limits_.Minimum), Shown(limits_.Maximum)));
        return;
    }
    SetAmount(amount);
}

void NumberEdit::keyPressEvent(QKeyEvent* event) {
    // A comma puts itself back, so the keys that delete step over it to the digit that was meant.
    if (!hasSelectedText() && event->modifiers() == Qt::NoModifier) {
        const int place = cursorPosition();
        if (event->key() == Qt::Key_Backspace && place > 0 && text()[place - 1] == kComma) setCursorPosition(place - 1);
        if (event->key() == Qt::Key_Delete && place < text().size() && text()[place] == kComma) setCursorPosition(place + 1);
    }
    EntryEdit::keyPressEvent(event);
}

QString NumberEdit::WidestText() const {
    const QString lowest = Shown(limits_.Minimum);
    const QString highest = Shown(limits_.Maximum);
    QString widest = lowest.size() > highest.size() ? lowest : highest;
    for (QChar& c : widest) {
        if (IsAsciiDigit(c)) c = u'0';
    }
    return widest;
}

sidbEdit::Limits sidbEdit::Money() {
    constexpr CurrencyAmount limit = CurrencyAmount::FromTenThousandths(999999999900);
    return {CurrencyAmount::FromTenThousandths(-limit.TenThousandths()), limit, 2, true};
}

silgEdit::silgEdit(int minimum, int maximum, QWidget* parent)
    : NumberEdit({CurrencyAmount::FromInteger(minimum), CurrencyAmount::FromInteger(maximum), 0, false}, parent) {}

}  // namespace tallymar
