#pragma once

#include <string_view>

#include "platform/pcl/PclDrawing.h"
#include "platform/pcl/SoftFont.h"

namespace tallymar {

// Reads a PCL 5 stream as a printer would that has just been switched on and holds `fonts`, Letter paper and Courier of 10 to
// the inch: cursor moves, rectangles and their shades, texts in fonts chosen by number or description, soft fonts, raster
// graphics, page set-up and macros. A page of a form is its blank and the lines of its values, one behind the other. What it
// does not know it skips by its length and counts.
//
// The stream may be anything: a stream that would draw, hold or repeat more than a few hundred pages of forms could fails with
// Failure::Overflow and one line; nothing else fails.
PclDrawing ReadPcl(std::string_view stream, const SoftFonts& fonts);

}  // namespace tallymar
