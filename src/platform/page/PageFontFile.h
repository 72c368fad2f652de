#pragma once

#include <bitset>
#include <string>
#include <string_view>

#include "platform/fonts/FontMetrics.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

// The installed fonts that may stand for a page font, the first choice first. The free ones come before the others: they are what
// the program is delivered with, and the same on every machine.
struct PageFontFamily {
    std::string_view PageName;  // "Arial Bold"
    const char* Candidates[2];
    bool Bold;
};

const PageFontFamily* FindPageFontFamily(std::string_view pageName);  // nullptr when there is none

// Is a font's width of a byte, in units of the metrics' em, that of the metrics? Releases of one face differ in a sign or two,
// such as the middle dot: beyond ASCII it is enough that there is a glyph, which is placed by the metrics anyway.
bool IsWidthOf(const FontMetrics& metrics, std::size_t byte, double width);

// Failure::DeviceError, with the package to install: a page is never drawn in a wrong font.
PlatformError MissingPageFont(std::string_view pageName);

// The bytes of Windows-1252 that a document draws in one font.
using UsedBytes = std::bitset<256>;

// A page font cut down to the characters used: a whole TrueType file of its own, the same bytes on every call. Measures are in
// thousandths of the em.
struct FontSubset {
    std::string PostScriptName;  // "LiberationSans-Bold"
    std::string File;
    int Box[4];  // left, bottom, right, top
    int CapHeight;
};

// Failure::DeviceError as MissingPageFont tells, also when the installed font has other widths (IsWidthOf).
FontSubset SubsetPageFont(const FontMetrics& metrics, const UsedBytes& used);

// The character that a byte is drawn as.
char32_t CodePointOf(char windows1252);

}  // namespace tallymar
