#include "platform/controls/EntryEdit.h"

#include <QFocusEvent>
#include <QStyle>
#include <QStyleOptionFrame>

namespace tallymar {

class EntryEdit::Checker : public QValidator {
 public:
    explicit Checker(EntryEdit* edit) : QValidator(edit), edit_(edit) {}
    State validate(QString& text, int& caret) const override { return edit_->showing_ ? Acceptable : edit_->Check(text, caret); }

 private:
    EntryEdit* edit_;
};

EntryEdit::EntryEdit(QWidget* parent) : QLineEdit(parent) {
    setValidator(new Checker(this));
    connect(this, &QLineEdit::textChanged, this, [this](const QString& text) { textBefore_ = text; });
    connect(this, &QLineEdit::inputRejected, this, [this] {
        if (const QString why = WhyRefused(); !why.isEmpty()) emit Refused(why);
    });
}

void EntryEdit::ShowText(const QString& text) {
    if (text == this->text()) return;
    showing_ = true;
    setText(text);
    showing_ = false;
}

QSize EntryEdit::sizeHint() const {
    ensurePolished();
    QSize size = QLineEdit::sizeHint();
    QStyleOptionFrame option;
    initStyleOption(&option);
    // Two pixels a side and the caret are the line edit's own margins inside its frame.
    const QSize contents(fontMetrics().horizontalAdvance(WidestText()) + 2 * option.lineWidth + 8, size.height());
    size.setWidth(style()->sizeFromContents(QStyle::CT_LineEdit, &option, contents, this).width());
    return size;
}

QSize EntryEdit::minimumSizeHint() const {
    // Texts may shrink to a dozen characters, amounts and dates must never hide a digit.
    const QSize whole = sizeHint();
    return {qMin(whole.width(), fontMetrics().averageCharWidth() * 24), whole.height()};
}

void EntryEdit::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    if (reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason) return;
    // Coming back to the window must not disturb an entry half typed; a window's first field comes this way too.
    if (reason == Qt::ActiveWindowFocusReason && windowLeft_) return;
    justEntered_ = reason == Qt::MouseFocusReason;
    if (!justEntered_) selectAll();
    Enter();
}

void EntryEdit::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    const Qt::FocusReason reason = event->reason();
    if (reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason) return;
    windowLeft_ = reason == Qt::ActiveWindowFocusReason;
    if (windowLeft_) return;
    Leave();
    emit Left();
}

void EntryEdit::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    if (justEntered_ && selectAllOnClick_ && !hasSelectedText()) selectAll();
    justEntered_ = false;
}

}  // namespace tallymar
