#pragma once

#include <QLabel>

namespace tallymar {

// The colour of text and marks that warn, readable on the given ground, light or dark.
QColor WarningColor(const QColor& ground);

// Has a screen reader say the text of a label that has just changed, wherever the keyboard is.
void Announce(QLabel* label);

// The status line of a form: one line of plain text, cut with an ellipsis where it is too long, and its whole text in the tool
// tip. A warning carries a sign and stands in bold, so that nobody has to see its colour.
class HintLine : public QLabel {
    Q_OBJECT

 public:
    enum class Mark { None, Warning };

    explicit HintLine(QWidget* parent);

    void Show(const QString& text, Mark mark);
    Mark Shown() const { return mark_; }

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    Mark mark_ = Mark::None;
};

}  // namespace tallymar
