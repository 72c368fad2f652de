#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tallymar {

// All positions and lengths of a drawing are units of 1/7200 inch from the upper left corner of the paper, x to the right and y
// down: a dot of 1/300 inch, a decipoint, a column of 10 to the inch and a row of 6 to the inch are whole numbers of them.
inline constexpr int kPclUnitsPerInch = 7200;
inline constexpr int kPclUnitsPerDot = 24;
inline constexpr int kPclUnitsPerDecipoint = 10;

// A font as a stream asks for it. Soft fonts are described in the same words.
struct PclFontDescription {
    int SymbolSet = 341;        // the number x 32 + the letter - 64: 10U (PC-8) is 341, 19U (Windows) 629
    bool Proportional = false;  // else of one pitch
    int Pitch = 1000;           // hundredths of a character to the inch; of fonts of one pitch
    int Height = 1200;          // hundredths of a point
    int Style = 0;              // 0 upright, 1 italic, more in higher bits
    int Weight = 0;             // -7 to 7; 3 is bold
    int Typeface = 3;           // 3 Courier, 16602 Arial, 4148 Univers ...

    friend bool operator==(const PclFontDescription&, const PclFontDescription&) = default;
};

// A font that texts of a drawing stand in.
struct PclFont {
    PclFontDescription Asked;
    // The page font that it is drawn in: "Arial", "Arial Bold" or "Courier New", with its size in points. Empty: a soft font
    // like none of them; its glyphs are in the drawing as bitmaps, and its texts only say what they read.
    std::string Face;
    double Size = 0;
};

// One drawn thing, in the order of drawing: what comes later lies on top.
struct PclOp {
    enum class Kind : std::uint8_t {
        Rectangle,  // filled, from its upper left corner
        Text,       // from the first character's origin: its left end on the baseline
        Bitmap,     // dots, from their upper left corner; where a bit is not set the paper shows
    };
    Kind Op = Kind::Rectangle;
    std::uint8_t Grey = 0;  // 0 black to 255 white
    std::uint16_t Font = 0;
    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::int32_t Width = 0;   // of a text: from its first character's origin to where the next character would begin
    std::int32_t Height = 0;  // 0 of a text
    std::uint32_t Start = 0;  // a text's first character; a bitmap's number
    std::uint32_t Length = 0;
};

// Dots, set bits being painted; a row fills whole bytes, the highest bit left.
struct PclBitmap {
    int Width = 0;
    int Height = 0;
    std::string Rows;

    int Stride() const { return (Width + 7) / 8; }
    bool IsSet(int x, int y) const {
        return (static_cast<unsigned char>(Rows[static_cast<std::size_t>(y) * Stride() + x / 8]) >> (7 - x % 8) & 1) != 0;
    }
};

struct PclPage {
    std::int32_t Width = 0;  // of the paper, as it is held to be read
    std::int32_t Height = 0;
    std::vector<PclOp> Ops;
};

// What a stream draws, ready to be shown, printed or written as PDF. Made by ReadPcl; a plain value otherwise.
struct PclDrawing {
    std::vector<PclPage> Pages;
    std::vector<PclFont> Fonts;
    std::vector<PclBitmap> Bitmaps;
    std::string Texts;                    // all texts, in Windows-1252
    std::vector<std::int32_t> Positions;  // of each character of Texts: the x of its origin

    // What the stream held beside that.
    int SkippedCommands = 0;    // not known here
    int SkippedCharacters = 0;  // right of the page, or not in their soft font
    int MissingFonts = 0;       // soft fonts asked for by number that are not there
    bool CutShort = false;      // the stream ends inside a command

    std::string_view Text(const PclOp& op) const { return std::string_view(Texts).substr(op.Start, op.Length); }
    const std::int32_t* PositionsOf(const PclOp& op) const { return Positions.data() + op.Start; }
    const PclBitmap& Bitmap(const PclOp& op) const { return Bitmaps[op.Start]; }
};

}  // namespace tallymar
