#include "platform/controls/ScrollPage.h"

namespace tallymar {

namespace {

constexpr int kLeastLines = 6;  // below that scrolling is no help

}  // namespace

ScrollPage::ScrollPage(QWidget* page) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidget(page);
    // The ground is that of what the page stands in.
    viewport()->setAutoFillBackground(false);
    page->setAutoFillBackground(false);
}

QSize ScrollPage::sizeHint() const {
    return widget() ? widget()->sizeHint() : QScrollArea::sizeHint();
}

QSize ScrollPage::minimumSizeHint() const {
    const int line = fontMetrics().lineSpacing();
    return QSize(line * kLeastLines * 3, line * kLeastLines).boundedTo(sizeHint());
}

void BringIntoView(QWidget* widget) {
    for (QWidget* above = widget->parentWidget(); above && !widget->isWindow(); above = above->parentWidget()) {
        if (auto* page = qobject_cast<ScrollPage*>(above)) {
            const int margin = page->fontMetrics().lineSpacing();
            page->ensureWidgetVisible(widget, margin, margin);
        }
    }
}

}  // namespace tallymar
