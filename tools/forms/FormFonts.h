#pragma once

#include <array>
#include <string_view>

#include "platform/fonts/FontMetrics.h"
#include "platform/pcl/PclWriter.h"

namespace tallymar::tools {

// The fonts of the blank forms. A description names them as its texts do, the printer by the soft font's number; both are cut
// from the face whose metrics are told here, so that a text is as wide on paper as the check of a description measures it.
struct FormFont {
    std::string_view Name;      // in a description
    std::string_view FileName;  // of the soft font
    std::string_view Metrics;
    PclFontChoice Printer;
    bool DigitsOnly = false;
};

inline constexpr auto kFormFonts = std::to_array<FormFont>({
    {"06m", "neltx06m.fnt", "Arial", {7201, 6, false}},
    {"08b", "neltx08b.fnt", "Arial Bold", {7202, 8, true}},
    {"08m", "neltx08m.fnt", "Arial", {7203, 8, false}},
    {"10b", "neltx10b.fnt", "Arial Bold", {7204, 10, true}},
    {"12b", "neltx12b.fnt", "Arial Bold", {7205, 12, true}},
    {"14b", "neltx14b.fnt", "Arial Bold", {7206, 14, true}},
    {"24b", "neltxocr.fnt", "Arial Bold", {7208, 24, true}, true},
});

// Rules, corners and boxes of one cell each, for pages of a firm's own; the delivered forms draw theirs.
inline constexpr std::string_view kLineFontFile = "neltxlin.fnt";
inline constexpr int kLineFontNumber = 7207;

inline constexpr int kDotsPerInch = 300;
inline constexpr double kDotsPerPoint = kDotsPerInch / 72.0;

// The advance of a Windows-1252 text in dots.
inline double WidthInDots(const FormFont& font, std::string_view text) {
    const FontMetrics& metrics = FindFontMetrics(font.Metrics);
    return static_cast<double>(AdvanceOf(metrics, text)) * font.Printer.Points * kDotsPerPoint / metrics.UnitsPerEm;
}

}  // namespace tallymar::tools
