#include "formoutput/frmFormSheetView.h"

#include <algorithm>
#include <cmath>

#include <QFontInfo>
#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include "platform/controls/ScreenText.h"
#include "platform/page/QtFormPainter.h"
#include "platform/runtime/FileReplacement.h"

namespace tallymar {

namespace {

constexpr double kCellShape = 5.0 / 3.0;  // a sixth of an inch to a tenth
constexpr double kFirstColumn = 2.5;      // cells from the paper's left edge
constexpr int kColumnsPerInch = 10;
constexpr double kLineInPoints = 12;
constexpr double kBaseline = 0.75;  // of a line, from its top
constexpr double kFrame = 2;        // pixels

QColor ToQColor(SheetColor color) {
    return QColor(color & 255, color >> 8 & 255, color >> 16 & 255);
}

}  // namespace

FormSheetView::FormSheetView(QWidget* parent) : QWidget(parent), text_(FormPages().front()) {
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("Form page"));
    SetCellWidth(cellWidth_);
}

void FormSheetView::Save(const std::filesystem::path& path) const {
    FileReplacement file(path);
    file.Write(text_.ToFile());
    file.Commit();
}

void FormSheetView::SetFont(const QString& name, double size, bool bold, bool italic) {
    fontName_ = name;
    fontPoints_ = size;
    bold_ = bold;
    italic_ = italic;
    update();
}

void FormSheetView::MarkField(int column, int line, int width, SheetColor color) {
    const auto mark = std::find_if(marks_.begin(), marks_.end(), [&](const Mark& one) {
        return one.Column == column && one.Line == line && one.Width == width;
    });
    if (mark == marks_.end()) {
        marks_.push_back({column, line, width, color});
    } else {
        mark->Color = color;
    }
    update();
}

int FormSheetView::ColumnAtX(int x) const {
    return static_cast<int>(std::floor(x / cellWidth_ - kFirstColumn));
}

int FormSheetView::LineAtY(int y) const {
    return static_cast<int>(std::floor(y / CellHeight())) + 1;
}

void FormSheetView::FormFile(PclDrawing blank) {
    blank_ = std::move(blank);
    picture_ = QPixmap();
    marks_.clear();
    update();
}

void FormSheetView::DataFile(FormPageText values) {
    text_ = std::move(values);
    update();
}

void FormSheetView::SetCellWidth(double pixels) {
    cellWidth_ = pixels;
    picture_ = QPixmap();
    setFixedSize(static_cast<int>(std::lround(cellWidth_ * kPageColumns)),
                 static_cast<int>(std::lround(CellHeight() * kPageLines)));
    update();
}

double FormSheetView::CellHeight() const {
    return cellWidth_ * kCellShape;
}

QRectF FormSheetView::CellRect(int column, int line, int width) const {
    return {(column + kFirstColumn) * cellWidth_, (line - 1) * CellHeight(), width * cellWidth_, CellHeight()};
}

QFont FormSheetView::CellFont() const {
    QFont font(fontName_);
    font.setBold(bold_);
    font.setItalic(italic_);
    font.setPointSizeF(std::max(1.0, CellHeight() * fontPoints_ / kLineInPoints * 72 / logicalDpiY()));
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setLetterSpacing(QFont::AbsoluteSpacing, cellWidth_ - QFontMetricsF(font).horizontalAdvance(u'0'));
    return font;
}

void FormSheetView::SetCurrent(int column, int line, int width) {
    current_ = {column, line, width, 0};
    update();
}

// In dots of the screen, so that rules fall on whole ones.
void FormSheetView::PaintBlank() {
    const double ratio = devicePixelRatioF();
    picture_ = QPixmap((QSizeF(size()) * ratio).toSize());
    picture_.fill(Qt::white);
    if (!blank_.Pages.empty()) {
        QPainter painter(&picture_);
        FormPainter(blank_, cellWidth_ * kColumnsPerInch * ratio).Paint(painter, 0);
    }
    picture_.setDevicePixelRatio(ratio);
}

void FormSheetView::paintEvent(QPaintEvent* event) {
    if (picture_.isNull() || picture_.devicePixelRatio() != devicePixelRatioF()) PaintBlank();
    QPainter painter(this);
    const QRect dirty = event->rect();
    const double ratio = picture_.devicePixelRatio();
    painter.drawPixmap(QRectF(dirty), picture_, QRectF(QPointF(dirty.topLeft()) * ratio, QSizeF(dirty.size()) * ratio));
    // Like a marker pen: what is printed there stays to be read.
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    for (const Mark& mark : marks_) painter.fillRect(CellRect(mark.Column - 1, mark.Line, mark.Width), ToQColor(mark.Color));
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    const QFont font = CellFont();
    painter.setFont(font);
    painter.setPen(Qt::black);
    const double inset = font.letterSpacing() / 2;
    for (int line = 1; line <= std::min(text_.LineCount(), kPageLines); ++line) {
        const QRectF first = CellRect(0, line, 1);
        if (first.bottom() < dirty.top() || first.top() > dirty.bottom()) continue;
        painter.drawText(QPointF(first.left() + inset, first.top() + kBaseline * CellHeight()), ToQString(text_.Line(line)));
    }
    if (current_.Width == 0) return;
    painter.setPen(QPen(palette().color(QPalette::Active, QPalette::Highlight), kFrame));
    painter.drawRect(CellRect(current_.Column, current_.Line, current_.Width).adjusted(-kFrame, -kFrame, kFrame, kFrame));
}

void FormSheetView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) emit Clicked(event->pos().x(), event->pos().y());
}

}  // namespace tallymar
