#include "platform/controls/sitxEdit.h"

#include <algorithm>

#include "platform/controls/ScreenText.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr int kShortText = 16;  // a code, shown at its own width; longer texts take the room that there is

constexpr QChar kDigitPlace = u'9';

// One character stays one character: a sharp s has no capital here.
QString Capitals(QString text) {
    for (QChar& character : text) {
        const QChar capital = character.toUpper();
        if (FitsWindows1252(capital)) character = capital;
    }
    return text;
}

bool IsAsciiDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

}  // namespace

sitxEdit::sitxEdit(int maxLength, QWidget* parent) : EntryEdit(parent) {
    setMaxLength(maxLength);
    if (maxLength <= kShortText) setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(this, &QLineEdit::textChanged, this, &EntryEdit::Changed);
}

void sitxEdit::SetPattern(std::string_view pattern) {
    pattern_ = QString::fromLatin1(pattern.data(), static_cast<qsizetype>(pattern.size()));
}

std::string sitxEdit::Text() const {
    return ToWindows1252(text());
}

void sitxEdit::SetText(std::string_view text) {
    ShowText(ToQString(text));
}

bool sitxEdit::Takes(QChar character) const {
    return FitsWindows1252(character) && (allowed_.isEmpty() || allowed_.contains(character)) && !refused_.contains(character);
}

QValidator::State sitxEdit::Check(QString& text, int& caret) const {
    if (upperCase_) text = Capitals(text);
    if (!pattern_.isEmpty()) return FitPattern(text, caret);
    // Taking away from an entry that holds what the field would refuse today must stay possible.
    const bool shortened = text.size() < TextBefore().size();
    return shortened || std::all_of(text.begin(), text.end(), [this](QChar c) { return Takes(c); }) ? QValidator::Acceptable
                                                                                                    : QValidator::Invalid;
}

QValidator::State sitxEdit::FitPattern(QString& text, int& caret) const {
    QString digits;
    qsizetype before = 0;  // digits before the caret
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (IsAsciiDigit(text[i])) {
            digits += text[i];
            if (i < caret) ++before;
        } else if (!pattern_.contains(text[i]) && !text[i].isSpace()) {
            return text.size() < TextBefore().size() ? QValidator::Acceptable : QValidator::Invalid;
        }
    }
    if (digits.size() > pattern_.count(kDigitPlace)) return QValidator::Invalid;
    QString fitted;
    qsizetype taken = 0;
    qsizetype place = 0;
    for (const QChar c : pattern_) {
        if (taken == digits.size()) break;
        fitted += c == kDigitPlace ? digits[taken++] : c;
        if (taken <= before) place = fitted.size();
        // A separator belongs to the digit after it.
        if (c != kDigitPlace && taken == before) --place;
    }
    text = fitted;
    caret = static_cast<int>(before == 0 ? 0 : place);
    return QValidator::Acceptable;
}

void sitxEdit::Leave() {
    if (upperCaseOnLeaving_) ShowText(Capitals(text()));
}

QString sitxEdit::WidestText() const {
    if (!pattern_.isEmpty()) return QString(pattern_).replace(kDigitPlace, u'0');
    // Capitals are wider than the average; a short code must show whole, a long line may scroll.
    return maxLength() <= 8 ? QString(maxLength(), u'M') : QString(qMin(maxLength(), 40), u'n');
}

}  // namespace tallymar
