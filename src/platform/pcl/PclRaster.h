#pragma once

#include <string>
#include <string_view>

#include "platform/pcl/PclDrawing.h"

namespace tallymar {

// Raster graphics: rows of dots between their start and end, each packed in one of PCL's ways.
class PclRaster {
 public:
    // The greatest size, in dots; what lies beyond is dropped.
    PclRaster(int mostWidth, int mostHeight) : mostWidth_(mostWidth), mostHeight_(mostHeight) {}

    // ESC*b#W in a method of ESC*b#M: 0 plain, 1 run lengths, 2 TIFF packed bits, 3 what differs from the row before, 5 a mixture
    // of these row by row, 9 what differs, in run lengths. Data that ends too soon leaves the rest of its row as the method has
    // it.
    void AddRow(std::string_view data, int method);
    void SkipRows(int count);  // ESC*b#Y: blank ones
    bool IsEmpty() const { return height_ == 0; }
    int Height() const { return height_; }
    PclBitmap Take();

    static bool KnowsMethod(int method);

 private:
    void AddDecoded(std::string row);
    void AddMixed(std::string_view data);

    std::size_t MostStride() const { return static_cast<std::size_t>(mostWidth_ + 7) / 8; }

    int mostWidth_;
    int mostHeight_;
    int height_ = 0;
    std::size_t stride_ = 0;
    std::string seed_;  // the row before
    struct Row {
        int Y;
        std::string Dots;
    };
    std::vector<Row> rows_;  // those that have dots
};

}  // namespace tallymar
