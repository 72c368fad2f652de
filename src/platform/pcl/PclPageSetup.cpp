#include "platform/pcl/PclPageSetup.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "platform/pcl/PclDrawing.h"

namespace tallymar {

namespace {

constexpr int kHalfInch = kPclUnitsPerInch / 2;

// Dots of 1/300 inch, as printers' manuals list them.
struct Paper {
    int Number;  // of ESC&l#A
    int Width;
    int Height;
    int UprightLeft;  // of the logical page, from either edge
    int SidewaysLeft;
};

constexpr Paper kPapers[] = {
    {1, 2175, 3150, 75, 60},   // Executive
    {2, 2550, 3300, 75, 60},   // Letter
    {3, 2550, 4200, 75, 60},   // Legal
    {26, 2480, 3507, 71, 59},  // A4
};

const Paper* FindPaper(int number) {
    const auto* found = std::find_if(std::begin(kPapers), std::end(kPapers), [&](const Paper& p) { return p.Number == number; });
    return found == std::end(kPapers) ? nullptr : found;
}

}  // namespace

PclPageSetup::PclPageSetup() {
    Apply();
}

bool PclPageSetup::SetPaper(int number) {
    if (FindPaper(number) == nullptr) return false;
    paper_ = number;
    Apply();
    return true;
}

bool PclPageSetup::SetOrientation(int number) {
    if (number < 0 || number > 3) return false;
    sideways_ = number % 2 != 0;
    Apply();
    return true;
}

void PclPageSetup::Apply() {
    const Paper& paper = *FindPaper(paper_);
    PaperWidth = (sideways_ ? paper.Height : paper.Width) * kPclUnitsPerDot;
    PaperHeight = (sideways_ ? paper.Width : paper.Height) * kPclUnitsPerDot;
    LogicalLeft = (sideways_ ? paper.SidewaysLeft : paper.UprightLeft) * kPclUnitsPerDot;
    LogicalWidth = PaperWidth - 2 * LogicalLeft;
    LeftMargin = 0;
    RightMargin = LogicalWidth;
    ResetMargins();
}

void PclPageSetup::ResetMargins() {
    TopMargin = kHalfInch;
    TextLength = PaperHeight - 2 * kHalfInch;
}

bool PclPageSetup::SetTopMargin(double lines) {
    const double top = std::abs(lines) * LineSpacing;
    if (LineSpacing == 0 || top > PaperHeight) return false;
    TopMargin = static_cast<int>(top);
    TextLength = std::max(PaperHeight - TopMargin - kHalfInch, 0);
    return true;
}

bool PclPageSetup::SetTextLength(double lines) {
    const double length = std::abs(lines) * LineSpacing;
    if (LineSpacing == 0 || length > PaperHeight - TopMargin) return false;
    TextLength = static_cast<int>(length);
    return true;
}

}  // namespace tallymar
