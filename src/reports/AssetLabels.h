#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "platform/page/DetailTable.h"
#include "platform/page/PageDocument.h"
#include "platform/prompts/Prompts.h"
#include "store/CompanySession.h"

namespace tallymar {

// Where the labels of a die-cut sheet lie on the paper, in twips (1440 to the inch). The maker's template dimensions, as the
// template collections of the free label programs give them: gLabels (templates/avery-us-templates.xml) for 5160 and 5161, CPAN's
// Paper::Specs (Avery/5662.pm) for 5662.
struct LabelStock {
    int Left;  // of the first label's edge, from the paper's
    int Top;
    int Width;  // of a label
    int Height;
    int AcrossPitch;  // from one label's left edge to the next one's
    int DownPitch;
};

inline constexpr LabelStock kStock5160{270, 720, 3780, 1440, 3960, 1440};   // 2 5/8 x 1 in, from 3/16 and 1/2 in, 1/8 in between
inline constexpr LabelStock kStock5161{225, 720, 5760, 1440, 6030, 1440};   // 4 x 1 in, from 5/32 and 1/2 in, 3/16 in between
inline constexpr LabelStock kStock5662{120, 1200, 5940, 1920, 6060, 1920};  // 4 1/8 x 1 1/3 in, from 1/12 and 5/6 in

// A sheet of laser labels: a grid of CharsPerInch across and 6 lines to the inch down, on portrait letter paper.
struct LabelSheet {
    std::string_view Code;  // "5160-12"
    std::string_view Item;  // as the user chooses it
    float CharsPerInch;
    float FontSize;  // points
    int LabelsAcross;
    std::array<int, 3> LeftColumns;
    int LinesPerLabel;
    int LabelsDown;
    int FirstLine;  // inside a label
    int TopMarginLines;
    LabelStock Stock;
};

inline constexpr std::array<LabelSheet, 4> kLabelSheets = {{
    {"5160-12", "5160 - 12 pitch", 12, 10.0F, 3, {1, 34, 67}, 6, 10, 1, 3, kStock5160},
    {"5160-16", "5160 - 16 pitch", 17, 7.5F, 3, {2, 48, 94}, 6, 10, 1, 3, kStock5160},
    {"5161", "5161 - 10 pitch", 10, 11.0F, 2, {4, 44}, 6, 10, 1, 3, kStock5161},
    {"5662", "5662 - 10 pitch", 10, 11.0F, 2, {4, 46}, 9, 7, 2, 4, kStock5662},
}};

const LabelSheet* FindLabelSheet(std::string_view code);  // nullptr when there is none

struct LabelOptions {
    const LabelSheet* Sheet = &kLabelSheets.front();
    std::string Start;  // asset numbers, inclusive; empty: from the first, to the last
    std::string End;
    std::string Division;  // empty or "*": every one
    std::string Department;
};

// Draws a label for every asset chosen that has not been disposed of, in the order of their numbers, on v: a canvas of portrait
// letter paper. The assets' index is AssetNum afterwards. details, when given, takes what stands on
// the labels. Returns the number of labels.
int PrintAssetLabels(CompanySession& session, const LabelOptions& options, Prompts& prompts, PageDocument& v,
                     DetailTable* details = nullptr);

}  // namespace tallymar
