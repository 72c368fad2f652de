#pragma once

#include <memory>

#include <QPointF>

#include "platform/pcl/PclDrawing.h"

class QPainter;

namespace tallymar {

// Draws the pages of a PclDrawing on anything that Qt paints on, at one scale: every character where the printer puts it, every
// rule at least one device pixel thick and on whole pixels, so that it stays crisp at any zoom. The paper itself is not painted.
//
// Needs a QGuiApplication. A missing font fails with Failure::DeviceError and a text that names the package to install.
class FormPainter {
 public:
    // The drawing must live as long as its painter. Finds all fonts at once.
    FormPainter(const PclDrawing& drawing, double pixelsPerInch);
    ~FormPainter();
    FormPainter(FormPainter&&) noexcept;
    FormPainter& operator=(FormPainter&&) noexcept;

    // origin: where the upper left corner of the paper lies. page counts from 0.
    void Paint(QPainter& painter, std::size_t page, QPointF origin = {}) const;

 private:
    struct Tools;

    std::unique_ptr<Tools> tools_;
};

}  // namespace tallymar
