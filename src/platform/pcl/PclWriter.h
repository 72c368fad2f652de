#pragma once

#include <string>
#include <string_view>

#include "platform/pcl/SoftFont.h"

namespace tallymar {

// A font that a stream asks for: by its description, which every printer answers with the nearest font that it has, and then by
// the number under which a soft font may lie in the printer. A printer without that number keeps what the description chose.
struct PclFontChoice {
    int Number;  // 0: by description alone
    int Points;
    bool Bold;
};

// Writes PCL 5 of 300 dots to the inch. A page is Letter, portrait, of 66 lines of 50 dots; x counts from the left edge of the
// logical page, y from its top.
class PclWriter {
 public:
    static constexpr int kArial = 16602;  // the typeface number that printers know Arial by

    // Set-up of a page on which nothing is drawn yet. The first 13 bytes are what a printer driver looks for to set duplex.
    void BeginPage();
    // A black rectangle; `grey` below 100 lays a pattern of that percentage.
    void Fill(int x, int y, int width, int height, int grey = 100);
    // Texts that follow are white, so that they show on black.
    void InkWhite(bool white);
    void SelectFont(const PclFontChoice& font);
    // `x` may lie between two dots. Text is Windows-1252; a control character is refused with Failure::InvalidCall.
    void Text(double x, int baseline, std::string_view text);
    // Leaves Courier of 10 characters and 6 lines to the inch with the cursor on the first character of the first line. The sheet
    // stays in the printer: what follows prints over the page.
    void EndPage();

    const std::string& Bytes() const { return bytes_; }

 private:
    void Escape(std::string_view rest);
    void UseUnits(int units);
    void MoveTo(int x, int y, std::string_view command, char column, char row);

    std::string bytes_;
    int units_ = 0;
    int x_ = -1;  // in dots or decipoints, as the last command was
    int y_ = -1;
    int grey_ = -1;
    int width_ = -1;
    int height_ = -1;
    bool white_ = false;
    PclFontChoice font_{-1, 0, false};
};

// A whole download of a font: it assigns its own number and stays in the printer until that is switched off.
std::string SoftFontDownload(int number, const SoftFont& font);

}  // namespace tallymar
