#include "platform/page/QtPagePainter.h"

#include <algorithm>
#include <cmath>

#include <QFont>
#include <QFontDatabase>
#include <QGlyphRun>
#include <QGuiApplication>
#include <QPainter>
#include <QVarLengthArray>

#include "platform/fonts/FontMetrics.h"
#include "platform/page/PageFontFile.h"
#include "platform/page/PagePlacement.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr double kTwipsPerDot = 4.8;  // of 1/300 inch

std::array<quint32, 256> GlyphsOf(const QRawFont& font) {
    std::array<quint32, 256> glyphs{};
    for (std::size_t byte = 0; byte < glyphs.size(); ++byte) {
        const char drawn = DrawnAs(static_cast<char>(byte));
        const QList<quint32> found = font.glyphIndexesForString(QString::fromStdString(ToUtf8(std::string_view(&drawn, 1))));
        if (found.size() == 1) glyphs[byte] = found.front();
    }
    return glyphs;
}

// Does the font have every character, as wide as the metrics say?
bool Agrees(const QRawFont& font, const FontMetrics& metrics) {
    QRawFont atUnits = font;
    atUnits.setPixelSize(metrics.UnitsPerEm);
    const std::array<quint32, 256> glyphs = GlyphsOf(atUnits);
    QPointF advances[256];
    if (!atUnits.advancesForGlyphIndexes(glyphs.data(), advances, 256)) return false;
    for (std::size_t byte = 0; byte < glyphs.size(); ++byte) {
        if (glyphs[byte] == 0 || std::abs(advances[byte].x() - metrics.Advances[byte]) > 1) return false;
    }
    return true;
}

QRawFont FindFont(const FontMetrics& metrics, double pixelSize) {
    const PageFontFamily* family = FindPageFontFamily(metrics.Name);
    if (family == nullptr || qGuiApp == nullptr) throw MissingPageFont(metrics.Name);
    for (const char* name : family->Candidates) {
        // Asked for by name first: Qt would put any other font in the place of one that it does not have.
        if (!QFontDatabase::hasFamily(QString::fromLatin1(name))) continue;
        QFont wanted(QString::fromLatin1(name));
        wanted.setWeight(family->Bold ? QFont::Bold : QFont::Normal);
        wanted.setPixelSize(std::max(1, static_cast<int>(pixelSize)));
        wanted.setHintingPreference(QFont::PreferNoHinting);
        wanted.setStyleStrategy(QFont::NoFontMerging);
        QRawFont font = QRawFont::fromFont(wanted);
        if (!font.isValid() || !Agrees(font, metrics)) continue;
        font.setPixelSize(pixelSize);
        return font;
    }
    throw MissingPageFont(metrics.Name);
}

}  // namespace

PagePainter::PagePainter(const PageDocument& pages, double scale) : pages_(pages), scale_(scale) {
    for (const PageFont& font : pages.Fonts()) faces_.push_back(MakeFace(font, scale));
}

PagePainter::Face PagePainter::MakeFace(const PageFont& font, double scale) {
    const FontMetrics& metrics = FindFontMetrics(font.Name);
    Face face;
    face.Font = FindFont(metrics, static_cast<double>(font.Size) * 20 * scale);
    face.Glyphs = GlyphsOf(face.Font);
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
        glyphs[i] = face.Glyphs[byte];
        positions[i] = QPointF(x, 0);
        x += face.Advances[byte];
    }
    QGlyphRun run;
    run.setRawFont(face.Font);
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
