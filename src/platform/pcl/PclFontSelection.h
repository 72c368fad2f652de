#pragma once

#include <memory>

#include "platform/fonts/FontMetrics.h"
#include "platform/pcl/PclDrawing.h"
#include "platform/pcl/SoftFont.h"

namespace tallymar {

// What a printer prints in when a description is asked for.
struct ChosenFont {
    PclFont Drawn;
    std::shared_ptr<const SoftFont> Soft;  // none: one of the printer's own
    const FontMetrics* Metrics = nullptr;  // of the page font, unless a soft font is like none
    int Spacing = 0;                       // units from character to character; of a font of several widths, of a blank
};

// The nearest font by symbol set, spacing, pitch, height, style, weight and typeface, in this order; among equals a soft font.
// The printer's own fonts are Courier, of any pitch, and Arial, of any height.
ChosenFont ChooseFont(const PclFontDescription& asked, const SoftFonts& softFonts);

// A soft font whatever the description. It is drawn in a page font when it has its typeface and, within a dot, its widths.
ChosenFont ChooseSoftFont(const std::shared_ptr<const SoftFont>& font);

PclFontDescription DescriptionOf(const SoftFont& font);

}  // namespace tallymar
