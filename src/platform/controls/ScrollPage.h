#pragma once

#include <QScrollArea>

namespace tallymar {

// A page that scrolls where the window is smaller than it; where there is room it takes what it needs. The form keeps the field
// that has the keyboard in view (CSForm).
class ScrollPage : public QScrollArea {
    Q_OBJECT

 public:
    explicit ScrollPage(QWidget* page);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
};

// Scrolls every page that the widget stands in, so that it shows.
void BringIntoView(QWidget* widget);

}  // namespace tallymar
