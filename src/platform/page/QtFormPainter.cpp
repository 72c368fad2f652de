#include "platform/page/QtFormPainter.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

#include <QColor>
#include <QGlyphRun>
#include <QImage>
#include <QPainter>
#include <QVarLengthArray>

#include "platform/page/QtPageFont.h"

namespace tallymar {

namespace {

constexpr double kUnitsPerPoint = kPclUnitsPerInch / 72.0;

// Edges put on whole pixels of the device, whatever the painter's own scale.
class PixelGrid {
 public:
    explicit PixelGrid(const QTransform& toDevice) : toDevice_(toDevice), snaps_(toDevice.type() <= QTransform::TxScale) {}

    // At least a pixel wide and high.
    QRectF Snap(const QRectF& area) const {
        if (!snaps_) return area;
        const QRectF device = toDevice_.mapRect(area);
        const double left = std::round(device.left());
        const double top = std::round(device.top());
        const double right = std::max(std::round(device.right()), left + 1);
        const double bottom = std::max(std::round(device.bottom()), top + 1);
        return toDevice_.inverted().mapRect(QRectF(QPointF(left, top), QPointF(right, bottom)));
    }
    QSize DeviceSize(const QRectF& area) const { return toDevice_.mapRect(area).size().toSize(); }

 private:
    QTransform toDevice_;
    bool snaps_;
};

QColor ColourOf(int grey) {
    return QColor(grey, grey, grey);
}

QImage ImageOf(const PclBitmap& bitmap, int grey) {
    QImage image(bitmap.Width, bitmap.Height, QImage::Format_ARGB32_Premultiplied);
    const QRgb ink = qRgb(grey, grey, grey);
    for (int y = 0; y < bitmap.Height; ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < bitmap.Width; ++x) row[x] = bitmap.IsSet(x, y) ? ink : 0;
    }
    return image;
}

}  // namespace

struct FormPainter::Tools {
    const PclDrawing& Drawing;
    double Scale;                   // device units to the unit
    std::vector<QtPageFont> Fonts;  // of the drawing; an invalid one for texts that are drawn as dots
    mutable std::map<std::pair<std::uint32_t, int>, QImage> Images;  // by bitmap and grey, in the size last drawn

    void PaintText(QPainter& painter, const PclOp& op, QPointF origin) const;
    void PaintBitmap(QPainter& painter, const PclOp& op, const QRectF& area, const PixelGrid& grid) const;
};

FormPainter::FormPainter(const PclDrawing& drawing, double pixelsPerInch)
    : tools_(std::make_unique<Tools>(Tools{drawing, pixelsPerInch / kPclUnitsPerInch, {}, {}})) {
    std::map<std::string, QtPageFont> faces;
    for (const PclFont& font : drawing.Fonts) {
        QtPageFont& drawn = tools_->Fonts.emplace_back();
        if (font.Face.empty()) continue;
        const double pixels = font.Size * kUnitsPerPoint * tools_->Scale;
        const auto known = faces.find(font.Face);
        drawn = known != faces.end() ? known->second
                                     : faces.emplace(font.Face, FindQtPageFont(FindFontMetrics(font.Face), pixels)).first->second;
        drawn.Font.setPixelSize(pixels);
    }
}

FormPainter::~FormPainter() = default;
FormPainter::FormPainter(FormPainter&&) noexcept = default;
FormPainter& FormPainter::operator=(FormPainter&&) noexcept = default;

void FormPainter::Paint(QPainter& painter, std::size_t page, QPointF origin) const {
    const double scale = tools_->Scale;
    const PixelGrid grid(painter.deviceTransform());
    for (const PclOp& op : tools_->Drawing.Pages.at(page).Ops) {
        if (op.Op == PclOp::Kind::Text) {
            tools_->PaintText(painter, op, origin);
            continue;
        }
        const QRectF area(origin + QPointF(op.X, op.Y) * scale, QSizeF(op.Width, op.Height) * scale);
        if (op.Op == PclOp::Kind::Rectangle) {
            painter.fillRect(grid.Snap(area), ColourOf(op.Grey));
        } else {
            tools_->PaintBitmap(painter, op, area, grid);
        }
    }
}

void FormPainter::Tools::PaintText(QPainter& painter, const PclOp& op, QPointF origin) const {
    const QtPageFont& font = Fonts[op.Font];
    if (!font.Font.isValid()) return;
    const std::string_view text = Drawing.Text(op);
    const std::int32_t* places = Drawing.PositionsOf(op);
    QVarLengthArray<quint32, 128> glyphs(static_cast<qsizetype>(text.size()));
    QVarLengthArray<QPointF, 128> positions(static_cast<qsizetype>(text.size()));
    for (std::size_t i = 0; i < text.size(); ++i) {
        glyphs[static_cast<qsizetype>(i)] = font.Glyphs[static_cast<unsigned char>(text[i])];
        positions[static_cast<qsizetype>(i)] = QPointF((places[i] - op.X) * Scale, 0);
    }
    QGlyphRun run;
    run.setRawFont(font.Font);
    run.setRawData(glyphs.constData(), positions.constData(), static_cast<int>(glyphs.size()));
    painter.setPen(ColourOf(op.Grey));
    painter.drawGlyphRun(origin + QPointF(op.X, op.Y) * Scale, run);
}

// Dots are made smaller once, and then kept: a page has few different ones, many times over.
void FormPainter::Tools::PaintBitmap(QPainter& painter, const PclOp& op, const QRectF& area, const PixelGrid& grid) const {
    const QRectF place = grid.Snap(area);
    const QSize size = grid.DeviceSize(place);
    QImage& image = Images[{op.Start, op.Grey}];
    if (image.size() != size) {
        const QImage dots = ImageOf(Drawing.Bitmap(op), op.Grey);
        const bool smaller = size.width() < dots.width() || size.height() < dots.height();
        image = smaller ? dots.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation) : dots;
    }
    painter.drawImage(place, image);
}

}  // namespace tallymar
