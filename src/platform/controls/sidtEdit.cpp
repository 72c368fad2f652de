#include "platform/controls/sidtEdit.h"

#include "platform/controls/HintLine.h"
#include "platform/controls/ScreenText.h"
#include "platform/runtime/DateText.h"

namespace tallymar {

namespace {
constexpr int kLongestEntry = 32;  // "September 30, 2003 12:30:00 PM"
constexpr const char* kMarked = "noDate";
}  // namespace

sidtEdit::sidtEdit(QWidget* parent) : EntryEdit(parent) {
    setMaxLength(kLongestEntry);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    SelectAllOnClick(true);
    connect(this, &QLineEdit::textChanged, this, &EntryEdit::Changed);
    connect(this, &QLineEdit::textChanged, this, &sidtEdit::Mark);
}

Date sidtEdit::Value() const {
    return ParseDate(Text()).value_or(Date());
}

void sidtEdit::SetValue(Date date) {
    ShowText(date.IsNone() ? QString() : ToQString(FormatShortDate(date)));
}

std::string sidtEdit::Text() const {
    return ToWindows1252(text());
}

void sidtEdit::SetText(std::string_view text) {
    ShowText(ToQString(text));
}

QValidator::State sidtEdit::Check(QString& text, int& /*caret*/) const {
    return text.size() < TextBefore().size() || FitsWindows1252(text) ? QValidator::Acceptable : QValidator::Invalid;
}

void sidtEdit::Leave() {
    if (const Date date = Value(); !date.IsNone()) SetValue(date);
    Mark();
    if (IsMarked()) emit Refused(tr("Not a date: nothing will be stored"));
}

bool sidtEdit::IsMarked() const {
    return property(kMarked).toBool();
}

void sidtEdit::Mark() {
    // While it is being typed every date is unfinished: only a field that was left is marked.
    const bool wrong = !hasFocus() && !text().trimmed().isEmpty() && !IsDate();
    if (wrong == IsMarked()) return;
    setProperty(kMarked, wrong);
    QPalette marked;
    if (wrong) marked.setColor(QPalette::Text, WarningColor(palette().color(QPalette::Base)));
    setPalette(marked);
    setToolTip(wrong ? tr("This is not a date.") : QString());
}

QString sidtEdit::WidestText() const {
    return QStringLiteral("00/00/00000");
}

}  // namespace tallymar
