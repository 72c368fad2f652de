// Rectangles, patterns and raster graphics.

#include <algorithm>
#include <cmath>

#include "platform/pcl/PclInterpreter.h"

namespace tallymar {

namespace {

constexpr double kLargest = 1e6;  // units: larger than every page

int Size(double units) {
    return static_cast<int>(std::lround(std::clamp(units, 0.0, kLargest)));
}

}  // namespace

void PclInterpreter::SetRectangleWidth(const PclCommand& command) {
    now_.RectangleWidth = Size(command.Value * now_.Unit);
}

void PclInterpreter::SetRectangleHeight(const PclCommand& command) {
    now_.RectangleHeight = Size(command.Value * now_.Unit);
}

void PclInterpreter::SetRectangleWidthDecipoints(const PclCommand& command) {
    now_.RectangleWidth = Size(command.Value * kPclUnitsPerDecipoint);
}

void PclInterpreter::SetRectangleHeightDecipoints(const PclCommand& command) {
    now_.RectangleHeight = Size(command.Value * kPclUnitsPerDecipoint);
}

void PclInterpreter::FillRectangle(const PclCommand& command) {
    constexpr int kCurrentPattern = 5;
    const int kind = command.Whole() == kCurrentPattern ? now_.Pattern : command.Whole();
    if (kind < PclPatterns::Black || kind > PclPatterns::Own) return;
    const int grey = patterns_.GreyOf(kind, now_.PatternId);
    const bool opaque = grey == 255 || now_.PatternIsOpaque;
    const int width = std::min(now_.RectangleWidth, now_.Page.LogicalWidth - x_);
    canvas_.Rectangle(now_.Page.LogicalLeft + x_, y_, width, now_.RectangleHeight, grey, opaque);
}

void PclInterpreter::SetPatternId(const PclCommand& command) {
    now_.PatternId = command.Whole();
}

void PclInterpreter::DownloadPattern(const PclCommand& command) {
    if (!patterns_.Download(now_.PatternId, command.Data)) ++drawing_.SkippedCommands;
}

void PclInterpreter::SetSourceTransparency(const PclCommand& command) {
    now_.SourceIsOpaque = command.Whole() == 1;
}

void PclInterpreter::SetPatternTransparency(const PclCommand& command) {
    now_.PatternIsOpaque = command.Whole() == 1;
}

void PclInterpreter::SetPattern(const PclCommand& command) {
    if (command.Whole() >= PclPatterns::Black && command.Whole() <= PclPatterns::Own) now_.Pattern = command.Whole();
}

void PclInterpreter::SetRasterResolution(const PclCommand& command) {
    constexpr int kKnown[] = {75, 100, 150, 200, 300, 600};
    if (std::find(std::begin(kKnown), std::end(kKnown), command.Whole()) != std::end(kKnown)) {
        now_.RasterResolution = command.Whole();
    }
}

void PclInterpreter::SetRasterWidth(const PclCommand& command) {
    now_.RasterWidth = std::abs(command.Whole());
}

void PclInterpreter::SetRasterHeight(const PclCommand& command) {
    now_.RasterHeight = std::abs(command.Whole());
}

void PclInterpreter::StartRaster(const PclCommand& command) {
    rasterDot_ = kPclUnitsPerInch / now_.RasterResolution;
    rasterPlace_ = {command.Whole() == 1 ? x_ : 0, y_};
    const auto most = [](int room, int asked) { return asked < 0 ? room : std::min(room, asked); };
    const int columns = (now_.Page.LogicalWidth - rasterPlace_.X) / rasterDot_;
    const int rows = (now_.Page.PaperHeight - rasterPlace_.Y) / rasterDot_;
    raster_ = PclRaster(most(columns, now_.RasterWidth), most(rows, now_.RasterHeight));
    inRaster_ = true;
}

void PclInterpreter::FinishRaster(const PclCommand&) {
    EndRaster();
}

void PclInterpreter::FinishRasterAndReset(const PclCommand&) {
    EndRaster();
    now_.RasterMethod = 0;
}

void PclInterpreter::SetRasterMethod(const PclCommand& command) {
    if (PclRaster::KnowsMethod(command.Whole())) {
        now_.RasterMethod = command.Whole();
    } else {
        ++drawing_.SkippedCommands;
    }
}

void PclInterpreter::SkipRasterRows(const PclCommand& command) {
    if (inRaster_) raster_.SkipRows(command.Whole());
}

void PclInterpreter::AddRasterRow(const PclCommand& command) {
    if (!inRaster_) StartRaster({});
    raster_.AddRow(command.Data, now_.RasterMethod);
}

// The cursor is left below the last row, at the raster's left edge.
void PclInterpreter::EndRaster() {
    if (!inRaster_) return;
    inRaster_ = false;
    const int height = raster_.Height() * rasterDot_;
    const int x = now_.Page.LogicalLeft + rasterPlace_.X;
    PclBitmap bitmap = raster_.Take();
    if (now_.SourceIsOpaque && bitmap.Width > 0) {
        canvas_.Rectangle(x, rasterPlace_.Y, bitmap.Width * rasterDot_, bitmap.Height * rasterDot_, 255, true);
    }
    if (!InkShows()) canvas_.ChargeDots(bitmap.Rows.size());
    if (bitmap.Width > 0 && InkShows()) canvas_.Bitmap(std::move(bitmap), x, rasterPlace_.Y, rasterDot_, Ink());
    MoveX(rasterPlace_.X, false);
    MoveY(rasterPlace_.Y + height, false, 0);
}

}  // namespace tallymar
