#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tallymar {

// The measures of a page font, in units of UnitsPerEm to the em. They stand in the program, so that a report breaks and clips
// alike on every machine, with or without a display.
struct FontMetrics {
    std::string_view Name;
    int UnitsPerEm;
    int Ascent;                               // from the top of a line to its baseline
    int Descent;                              // from the baseline to the bottom of the line
    std::array<std::uint16_t, 256> Advances;  // by Windows-1252 byte
};

// "Arial", "Arial Bold" and "Courier New"; another name fails with Failure::InvalidCall.
const FontMetrics& FindFontMetrics(std::string_view name);

// The sum of the advance widths, in the font's units.
std::int64_t AdvanceOf(const FontMetrics& metrics, std::string_view text);

// A measure in the font's units at a size in points, as twips: measure x size x 20 / UnitsPerEm.
constexpr double ToTwips(const FontMetrics& metrics, std::int64_t measure, float points) {
    return static_cast<double>(measure) * static_cast<double>(points) * 20.0 / metrics.UnitsPerEm;
}

// What a byte of a text is drawn as. A control character and the five bytes that Windows-1252 leaves undefined are a blank, as
// is the no-break space; the soft hyphen, which fonts hide, is a hyphen. Every other byte is itself.
constexpr char DrawnAs(char c) {
    const auto byte = static_cast<unsigned char>(c);
    const bool undefined = byte == 0x81 || byte == 0x8D || byte == 0x8F || byte == 0x90 || byte == 0x9D;
    if (byte < 0x20 || byte == 0x7F || byte == 0xA0 || undefined) return ' ';
    return byte == 0xAD ? '-' : c;
}

}  // namespace tallymar
