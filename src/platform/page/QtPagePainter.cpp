#include "platform/page/QtPagePainter.h"

#include <algorithm>
#include <cmath>

#include <QGlyphRun>
#include <QPainter>
#include <QVarLengthArray>

#include "platform/fonts/FontMetrics.h"
#include "platform/page/PagePlacement.h"

namespace tallymar {

namespace {

constexpr double kTwipsPerDot = 4.8;  // of 1/300 inch

}  // namespace

PagePainter::PagePainter(const PageDocument& pages, double scale) : pages_(pages), scale_(scale) {
    for (const PageFont& font : pages.Fonts()) faces_.push_back(MakeFace(font, scale));
}

PagePainter::Face PagePainter::MakeFace(const PageFont& font, double scale) {
    const FontMetrics& metrics = FindFontMetrics(font.Name);
    Face face;
    face.Drawn = FindQtPageFont(metrics, static_cast<double>(font.Size) * 20 * scale);
    for (std::size_t byte = 0; byte < face.Advances.size(); ++byte) {
        face.Advances[byte] = ToTwips(metrics, metrics.Advances[byte], font.Size) * scale;
    }
    face.Ascent = ToTwips(metrics, metrics.Ascent, font.Size) * scale;
    return face;
}

void PagePainter::Paint(QPainter& painter, int page, QPointF origin) const {
    painter.setPen(Qt::black);
    const PagePlacement placement(pages_, page);
    for (const PageItem* item = pages_.PageBegin(page); item != pages_.PageEnd(page); ++item) {
        if (item->Op == PageItem::Kind::Text) {
            PaintText(painter, *item, placement, origin);
        } else {
            PaintLine(painter, *item, placement, origin);
        }
    }
}

void PagePainter::PaintText(QPainter& painter, const PageItem& item, const PagePlacement& placement, QPointF origin) const {
    const Face& face = faces_.at(item.Font);
    const std::string_view text = placement.ShownText(item);
    const PagePlacement::Place place = placement.PlaceOf(item);
    QVarLengthArray<quint32, 64> glyphs(static_cast<qsizetype>(text.size()));
    QVarLengthArray<QPointF, 64> positions(static_cast<qsizetype>(text.size()));
    double x = 0;
    for (qsizetype i = 0; i < glyphs.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[static_cast<std::size_t>(i)]);
        glyphs[i] = face.Drawn.Glyphs[byte];
        positions[i] = QPointF(x, 0);
        x += face.Advances[byte];
    }
    QGlyphRun run;
    run.setRawFont(face.Drawn.Font);
    run.setRawData(glyphs.constData(), positions.constData(), static_cast<int>(glyphs.size()));
    painter.drawGlyphRun(origin + QPointF(place.X * scale_, place.Y * scale_ + face.Ascent), run);
}

// A filled bar and no pen: a pen's caps would lengthen the line.
void PagePainter::PaintLine(QPainter& painter, const PageItem& item, const PagePlacement& placement, QPointF origin) const {
    const double thickness = item.LineWidth * kTwipsPerDot * scale_;
    const PagePlacement::Place begin = placement.PlaceOf(item);
    const PagePlacement::Place end = placement.EndOf(item);
    const QPointF from = origin + QPointF(begin.X, begin.Y) * scale_;
    const QPointF to = origin + QPointF(end.X, end.Y) * scale_;
    if (item.Y == item.Y2) {
        painter.fillRect(QRectF(from.x(), from.y() - thickness / 2, to.x() - from.x(), thickness).normalized(), Qt::black);
    } else if (item.X == item.X2) {
        painter.fillRect(QRectF(from.x() - thickness / 2, from.y(), thickness, to.y() - from.y()).normalized(), Qt::black);
    } else {
        painter.save();
        painter.setPen(QPen(Qt::black, thickness, Qt::SolidLine, Qt::FlatCap));
        painter.drawLine(from, to);
        painter.restore();
    }
}

}  // namespace tallymar
