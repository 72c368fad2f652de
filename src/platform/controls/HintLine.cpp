#include "platform/controls/HintLine.h"

#include <QAccessible>
#include <QPainter>

namespace tallymar {

namespace {

// An exclamation mark in a triangle.
void PaintSign(QPainter& painter, const QRectF& box, const QColor& color, const QColor& ground) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPolygon(QPolygonF({{box.center().x(), box.top()}, box.bottomRight(), box.bottomLeft()}));
    painter.setBrush(ground);
    const double thick = box.width() / 8;
    const double middle = box.center().x();
    painter.drawRect(QRectF(middle - thick / 2, box.top() + box.height() * 0.35, thick, box.height() * 0.32));
    painter.drawRect(QRectF(middle - thick / 2, box.top() + box.height() * 0.76, thick, thick));
}

}  // namespace

QColor WarningColor(const QColor& ground) {
    return ground.lightness() < 128 ? QColor(0xff8a80) : QColor(0xb3261e);
}

void Announce(QLabel* label) {
    if (label->text().isEmpty() || !QAccessible::isActive()) return;
    QAccessibleEvent said(label, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

HintLine::HintLine(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    // A long hint must not widen the window under the user's hands.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setMinimumHeight(fontMetrics().height());
    setAccessibleName(tr("Status"));
}

void HintLine::Show(const QString& text, Mark mark) {
    mark_ = text.isEmpty() ? Mark::None : mark;
    setText(text);
    setToolTip(text);
    const QString spoken = mark_ == Mark::Warning ? tr("Warning: %1").arg(text) : text;
    setAccessibleName(text.isEmpty() ? tr("Status") : spoken);
    update();
}

void HintLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QRect room = contentsRect();
    const QColor ground = palette().color(QPalette::Window);
    QColor color = palette().color(QPalette::WindowText);
    QFont shown = font();
    if (mark_ == Mark::Warning) {
        color = WarningColor(ground);
        shown.setBold(true);
        const double side = fontMetrics().ascent();
        PaintSign(painter, {room.left() + 1.0, room.center().y() - side / 2, side * 1.1, side}, color, ground);
        room.setLeft(room.left() + static_cast<int>(side * 1.6));
    }
    painter.setFont(shown);
    painter.setPen(color);
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter,
                     QFontMetrics(shown).elidedText(text(), Qt::ElideRight, room.width()));
}

}  // namespace tallymar
