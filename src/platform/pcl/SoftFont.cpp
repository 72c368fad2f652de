#include "platform/pcl/SoftFont.h"

#include <algorithm>

#include "platform/pcl/PclBytes.h"

namespace tallymar {

namespace {

constexpr int kLongestSide = 4200;  // dots: no character is larger than a page of Legal paper at 300 dots
constexpr std::size_t kHeaderSize = 64;
constexpr std::size_t kGlyphHeadSize = 16;

// Is there data for all rows? Looked at first: a character that is not whole must not cost what its size says.
bool IsWhole(std::string_view data, int width, int height) {
    std::size_t at = 0;
    for (int y = 0; y < height;) {
        if (at >= data.size()) return false;
        y += PclByte(data, at++) + 1;
        for (int x = 0; x < width;) {
            if (at >= data.size()) return false;
            x += PclByte(data, at++);
        }
    }
    return true;
}

// Rows of white and black runs by turns; before each row how often it is repeated.
std::optional<std::string> Unpack(std::string_view data, int width, int height) {
    if (!IsWhole(data, width, height)) return std::nullopt;
    const std::size_t stride = static_cast<std::size_t>(width + 7) / 8;
    std::string rows;
    std::size_t at = 0;
    for (int y = 0; y < height;) {
        const int repeats = std::min(static_cast<int>(static_cast<unsigned char>(data[at++])) + 1, height - y);
        std::string row(stride, '\0');
        bool black = false;
        for (int x = 0; x < width; black = !black) {
            const int run = std::min<int>(static_cast<unsigned char>(data[at++]), width - x);
            for (int i = x; black && i < x + run; ++i) row[static_cast<std::size_t>(i) / 8] |= static_cast<char>(0x80 >> i % 8);
            x += run;
        }
        for (int i = 0; i < repeats; ++i) rows += row;
        y += repeats;
    }
    return rows;
}

}  // namespace

const SoftGlyph* SoftFont::Find(char c) const {
    const auto found = Glyphs.find(static_cast<std::uint8_t>(c));
    return found == Glyphs.end() ? nullptr : &found->second;
}

std::optional<SoftFont> ParseSoftFontHeader(std::string_view data) {
    if (data.size() < kHeaderSize) return std::nullopt;
    constexpr int kPlainFormat = 0;
    constexpr int kWithResolution = 20;
    const int format = PclByte(data, 2);
    if (format != kPlainFormat && format != kWithResolution) return std::nullopt;
    SoftFont font;
    font.Baseline = PclUnsigned16(data, 6);
    font.CellWidth = PclUnsigned16(data, 8);
    font.CellHeight = PclUnsigned16(data, 10);
    if (PclByte(data, 12) != 0 || std::max(font.CellWidth, font.CellHeight) > kLongestSide) return std::nullopt;
    font.Proportional = PclByte(data, 13) == 1;
    font.SymbolSet = PclUnsigned16(data, 14);
    font.Pitch = PclUnsigned16(data, 16);
    font.Height = PclUnsigned16(data, 18);
    if (font.Height == 0) font.Height = std::max(font.CellHeight, 1) * 4;  // not told: as high as its cell
    font.Style = PclByte(data, 4) << 8 | PclByte(data, 23);
    font.Weight = PclSigned8(data, 24);
    font.Typeface = PclByte(data, 26) << 8 | PclByte(data, 25);
    font.Name = std::string(data.substr(48, 16));
    font.Name.resize(font.Name.find_last_not_of(std::string_view("\0 ", 2)) + 1);
    if (format == kWithResolution && data.size() >= kHeaderSize + 4) {
        font.Resolution = PclUnsigned16(data, 64);
        // One resolution both ways, and one that dots of a laser printer have.
        if (font.Resolution < 75 || font.Resolution > 1200 || PclUnsigned16(data, 66) != font.Resolution) return std::nullopt;
    }
    return font;
}

std::optional<SoftGlyph> ParseSoftGlyph(std::string_view data) {
    constexpr int kBitmapFormat = 4;
    constexpr int kPlainClass = 1;
    constexpr int kRunLengthClass = 2;
    if (data.size() < kGlyphHeadSize || PclByte(data, 0) != kBitmapFormat || PclByte(data, 1) != 0 || PclByte(data, 4) != 0) {
        return std::nullopt;
    }
    SoftGlyph glyph;
    glyph.Left = PclSigned16(data, 6);
    glyph.Top = PclSigned16(data, 8);
    glyph.Width = PclUnsigned16(data, 10);
    glyph.Height = PclUnsigned16(data, 12);
    glyph.DeltaX = PclSigned16(data, 14);
    if (std::max(glyph.Width, glyph.Height) > kLongestSide) return std::nullopt;
    if (glyph.Width == 0 || glyph.Height == 0) {
        glyph.Width = glyph.Height = 0;
        return glyph;
    }
    const std::string_view dots = data.substr(kGlyphHeadSize);
    if (PclByte(data, 3) == kRunLengthClass) {
        std::optional<std::string> rows = Unpack(dots, glyph.Width, glyph.Height);
        if (!rows) return std::nullopt;
        glyph.Rows = std::move(*rows);
        return glyph;
    }
    const std::size_t size = static_cast<std::size_t>(glyph.Width + 7) / 8 * static_cast<std::size_t>(glyph.Height);
    if (PclByte(data, 3) != kPlainClass || dots.size() < size) return std::nullopt;
    glyph.Rows = dots.substr(0, size);
    return glyph;
}

std::shared_ptr<const SoftFont> SoftFonts::Find(int number) const {
    const auto found = fonts_.find(number);
    return found == fonts_.end() ? nullptr : found->second;
}

}  // namespace tallymar
