#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tallymar {

// One character of a soft font: dots of the font's resolution.
struct SoftGlyph {
    int Left = 0;  // from the character's origin right to its first column of dots
    int Top = 0;   // from the baseline up to the top of its first row
    int Width = 0;
    int Height = 0;
    int DeltaX = 0;    // quarters of a dot from this origin to that of the next character; unused in a font of one pitch
    std::string Rows;  // Height rows of (Width + 7) / 8 bytes, the highest bit left; a set bit is black
};

// A bitmap font of PCL 5 as it is downloaded into a printer.
struct SoftFont {
    int SymbolSet = 629;        // the number x 32 + the letter - 64: 19U (Windows) is 629
    bool Proportional = false;  // else all characters take Pitch
    int Pitch = 0;              // quarters of a dot: the width of all characters, or of a blank
    int Height = 0;             // quarters of a dot: the design height, 1/72 inch being a point
    int Style = 0;              // 0 upright, 1 italic
    int Weight = 0;             // -7 to 7; 3 is bold
    int Typeface = 0;           // 16602 Arial, 4099 Courier ...
    int Baseline = 0;           // dots from the cell's top down
    int CellWidth = 0;          // dots
    int CellHeight = 0;
    int Resolution = 300;  // dots to the inch
    std::string Name;      // up to 16 characters
    std::map<std::uint8_t, SoftGlyph> Glyphs;

    const SoftGlyph* Find(char c) const;
    double Points() const { return Height * 72.0 / (4.0 * Resolution); }
};

// The header of a font (the data of ESC )s#W): formats 0 and 20, for upright pages. None when it is no such header.
std::optional<SoftFont> ParseSoftFontHeader(std::string_view data);

// A character (the data of ESC (s#W) that is complete in itself: class 1, plain dots, or 2, run lengths.
// None when it is not whole, or larger than a page.
std::optional<SoftGlyph> ParseSoftGlyph(std::string_view data);

// The fonts that are in a printer, by the numbers that they were given.
class SoftFonts {
 public:
    // What a download leaves in the printer; everything else in the stream goes nowhere. Fails as ReadPcl does.
    void Download(std::string_view stream);

    void Add(int number, std::shared_ptr<const SoftFont> font) { fonts_[number] = std::move(font); }
    void Remove(int number) { fonts_.erase(number); }
    std::shared_ptr<const SoftFont> Find(int number) const;
    const std::map<int, std::shared_ptr<const SoftFont>>& All() const { return fonts_; }

 private:
    std::map<int, std::shared_ptr<const SoftFont>> fonts_;
};

}  // namespace tallymar
