#pragma once

#include <array>
#include <vector>

#include <QPointF>

#include "platform/page/PageDocument.h"
#include "platform/page/QtPageFont.h"

class QPainter;

namespace tallymar {

class PagePlacement;

// Draws pages of one document on anything that Qt paints on, at one scale. Every glyph is put where the document's own metrics
// put it: no kerning, no hinting of advances, so that the preview and the printer show the page that the PDF holds.
//
// Needs a QGuiApplication. A font of the document that is not installed, or that has other widths than it
// should, fails with Failure::DeviceError and a text that names the package to install: a report is never drawn in a wrong font.
class PagePainter {
 public:
    // scale: device units to the twip, 1440 dots per inch being 1. Finds all the document's fonts at once, so that a missing one
    // is told before anything is drawn; the document gets no more fonts while it is painted.
    PagePainter(const PageDocument& pages, double scale);

    // origin: where the upper left corner of the paper lies, in device units.
    void Paint(QPainter& painter, int page, QPointF origin = {}) const;

    double Scale() const { return scale_; }

 private:
    struct Face {
        QtPageFont Drawn;
        std::array<double, 256> Advances;  // device units
        double Ascent;
    };

    static Face MakeFace(const PageFont& font, double scale);
    void PaintText(QPainter& painter, const PageItem& item, const PagePlacement& placement, QPointF origin) const;
    void PaintLine(QPainter& painter, const PageItem& item, const PagePlacement& placement, QPointF origin) const;

    const PageDocument& pages_;
    double scale_;
    std::vector<Face> faces_;  // as the document's fonts
};

}  // namespace tallymar
