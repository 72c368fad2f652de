#include "platform/pcl/PclWriter.h"

#include <cmath>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

constexpr int kDotsPerInch = 300;
constexpr int kFineUnitsPerInch = 1200;
constexpr double kDecipointsPerDot = 720.0 / kDotsPerInch;
constexpr int kHeaderSize = 64;
constexpr int kGlyphHead = 16;
constexpr std::size_t kNameWidth = 16;

// Big-endian fields of a download, in their order.
class Fields {
 public:
    Fields& Byte(int value) {
        text_ += static_cast<char>(value & 0xFF);
        return *this;
    }
    Fields& Word(int value) { return Byte(value >> 8).Byte(value); }
    Fields& Text(std::string_view text, std::size_t width) {
        text_.append(text.substr(0, width));
        if (text.size() < width) text_.append(width - text.size(), ' ');
        return *this;
    }
    const std::string& Done() const { return text_; }

 private:
    std::string text_;
};

}  // namespace

void PclWriter::Escape(std::string_view rest) {
    bytes_ += '\x1B';
    bytes_ += rest;
}

void PclWriter::BeginPage() {
    Escape("&l0O");
    Escape("&l8c66p");
    // Each of the two has set margins and text length to what the printer holds for usual; 66 lines must fit the sheet.
    Escape("&l0e66f0L");
    Escape("&a0L");
    Escape("&s1C");
    UseUnits(kDotsPerInch);
    Escape("*v0N");
    Escape("*v0O");
    Escape("*v0T");
}

void PclWriter::UseUnits(int units) {
    if (units == units_) return;
    Escape("&u" + std::to_string(units) + "D");
    units_ = units;
    x_ = y_ = -1;
}

// The letters of the command: "*pxX" in dots, "&ahV" in decipoints.
void PclWriter::MoveTo(int x, int y, std::string_view command, char column, char row) {
    if (x == x_ && y == y_) return;
    std::string move(command);
    const bool both = x != x_ && y != y_;
    if (x != x_) move += std::to_string(x) + (both ? column : static_cast<char>(column - 0x20));
    if (y != y_) move += std::to_string(y) + static_cast<char>(row - 0x20);
    Escape(move);
    x_ = x;
    y_ = y;
}

void PclWriter::Fill(int x, int y, int width, int height, int grey) {
    UseUnits(kDotsPerInch);
    MoveTo(x, y, "*p", 'x', 'y');
    std::string fill = "*c";
    if (width != width_) fill += std::to_string(width) + "a";
    if (height != height_) fill += std::to_string(height) + "b";
    if (grey >= 100) {
        fill += "0P";
    } else {
        if (grey != grey_) fill += std::to_string(grey) + "g";
        fill += "2P";
        grey_ = grey;
    }
    Escape(fill);
    width_ = width;
    height_ = height;
}

void PclWriter::InkWhite(bool white) {
    if (white == white_) return;
    // A white pattern shows only where patterns are opaque.
    Escape(white ? "*v1o1T" : "*v0o0T");
    white_ = white;
}

void PclWriter::SelectFont(const PclFontChoice& font) {
    if (font.Number == font_.Number && font.Points == font_.Points && font.Bold == font_.Bold) return;
    Escape("(19U");
    Escape("(s1p" + std::to_string(font.Points) + (font.Bold ? "v0s3b" : "v0s0b") + std::to_string(kArial) + "T");
    if (font.Number > 0) Escape("(" + std::to_string(font.Number) + "X");
    font_ = font;
}

void PclWriter::Text(double x, int baseline, std::string_view text) {
    for (const char c : text) {
        if (static_cast<unsigned char>(c) < ' ') throw PlatformError(Failure::InvalidCall);
    }
    // The width of every character is rounded to the unit of measure; a move in decipoints is the same in all units, also for a
    // printer that knows only dots.
    UseUnits(kFineUnitsPerInch);
    MoveTo(static_cast<int>(std::lround(x * kDecipointsPerDot)), static_cast<int>(std::lround(baseline * kDecipointsPerDot)),
           "&a", 'h', 'v');
    bytes_ += text;
    x_ = -1;  // where the text ends depends on the printer's font
}

void PclWriter::EndPage() {
    InkWhite(false);
    UseUnits(kDotsPerInch);
    Escape("(19U");
    Escape("(s0p10h12v0s0b3T");
    Escape("&l6D");
    Escape("&a0r0C");
}

std::string SoftFontDownload(int number, const SoftFont& font) {
    const int ascent = font.Baseline;
    const int below = font.CellHeight - font.Baseline;
    const std::string header = Fields()
                                   .Word(kHeaderSize)
                                   .Byte(0)  // format: a bitmap of the printer's own 300 dots
                                   .Byte(2)  // 256 characters, also those from 128 to 159
                                   .Word(0)
                                   .Word(ascent)
                                   .Word(font.CellWidth)
                                   .Word(font.CellHeight)
                                   .Byte(0)  // portrait
                                   .Byte(font.Proportional ? 1 : 0)
                                   .Word(font.SymbolSet)
                                   .Word(font.Pitch)
                                   .Word(font.Height)
                                   .Word(font.Height * 52 / 100)  // x-height
                                   .Byte(0)                       // width: normal
                                   .Byte(font.Style)
                                   .Byte(font.Weight)
                                   .Byte(font.Typeface)
                                   .Byte(font.Typeface >> 8)
                                   .Byte(0)  // serifs
                                   .Byte(2)  // letter quality
                                   .Byte(0)  // placement
                                   .Byte(-below)
                                   .Byte(2)                    // of an underline, dots
                                   .Word(font.CellHeight * 4)  // of a line of text, quarters
                                   .Word(font.Pitch)
                                   .Word(0x20)
                                   .Word(0xFF)
                                   .Word(0)
                                   .Word(font.Height * 72 / 100)  // capitals
                                   .Word(0)
                                   .Word(0)
                                   .Text(font.Name, kNameWidth)
                                   .Done();
    std::string bytes = "\x1B*c" + std::to_string(number) + "D\x1B)s" + std::to_string(header.size()) + "W" + header;
    for (const auto& [character, glyph] : font.Glyphs) {
        const std::string head = Fields()
                                     .Byte(4)  // format: raster
                                     .Byte(0)
                                     .Byte(kGlyphHead - 2)
                                     .Byte(1)
                                     .Word(0)  // portrait
                                     .Word(glyph.Left)
                                     .Word(glyph.Top)
                                     .Word(glyph.Width)
                                     .Word(glyph.Height)
                                     .Word(glyph.DeltaX)
                                     .Done();
        bytes += "\x1B*c" + std::to_string(character) + "E\x1B(s" + std::to_string(head.size() + glyph.Rows.size()) + "W" + head +
                 glyph.Rows;
    }
    return bytes + "\x1B*c5F";
}

}  // namespace tallymar
