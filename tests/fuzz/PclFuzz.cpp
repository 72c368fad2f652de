// Blank forms and soft fonts of a firm's own, damaged: read, and every byte of the drawing looked at.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/pcl/PclReader.h"
#include "platform/runtime/PlatformError.h"

namespace {

using namespace tallymar;

// Farther than any page's things: painters count in these.
bool IsNear(std::int32_t place) {
    return place > -100'000'000 && place < 100'000'000;
}

void Check(bool holds) {
    if (!holds) std::abort();
}

void Look(const PclDrawing& drawing) {
    Check(drawing.Texts.size() == drawing.Positions.size());
    for (const PclFont& font : drawing.Fonts) Check(font.Size > 0 && font.Size < 20'000);
    for (const PclBitmap& bitmap : drawing.Bitmaps) {
        Check(bitmap.Width > 0 && bitmap.Height > 0);
        Check(bitmap.Rows.size() == static_cast<std::size_t>(bitmap.Stride()) * static_cast<std::size_t>(bitmap.Height));
    }
    for (const PclPage& page : drawing.Pages) {
        Check(page.Width > 0 && page.Height > 0);
        for (const PclOp& op : page.Ops) {
            Check(IsNear(op.X) && IsNear(op.Y) && IsNear(op.Width) && IsNear(op.Height));
            switch (op.Op) {
                case PclOp::Kind::Rectangle:
                    Check(op.X >= 0 && op.Y >= 0 && op.X + op.Width <= page.Width && op.Y + op.Height <= page.Height);
                    break;
                case PclOp::Kind::Bitmap:
                    Check(op.Start < drawing.Bitmaps.size());
                    break;
                case PclOp::Kind::Text:
                    Check(op.Font < drawing.Fonts.size() && op.Length > 0 && op.Start + op.Length <= drawing.Texts.size());
                    for (std::size_t i = 0; i < op.Length; ++i) Check(IsNear(drawing.PositionsOf(op)[i]));
                    break;
            }
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view stream(reinterpret_cast<const char*>(data), size);
    try {
        // As fonts in the printer, and as a page after them.
        SoftFonts fonts;
        fonts.Download(stream.substr(0, size / 2));
        Look(ReadPcl(stream, fonts));
    } catch (const PlatformError&) {
    }
    return 0;
}
