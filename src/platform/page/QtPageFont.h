#pragma once

#include <array>

#include <QRawFont>

#include "platform/fonts/FontMetrics.h"

namespace tallymar {

// A page font as Qt draws it, at any size: its glyphs by byte of Windows-1252.
struct QtPageFont {
    QRawFont Font;
    std::array<quint32, 256> Glyphs;
};

// At the size of one em in device units. Needs a QGuiApplication; a font that is not installed, or that has other widths than the
// metrics say, fails with Failure::DeviceError as MissingPageFont tells.
QtPageFont FindQtPageFont(const FontMetrics& metrics, double pixelSize);

}  // namespace tallymar
