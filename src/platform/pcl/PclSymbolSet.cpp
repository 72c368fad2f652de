#include "platform/pcl/PclSymbolSet.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace tallymar {

namespace {

constexpr int kTextSets[] = {kRoman8, kAscii, kLatin1, kWindowsLatin1, kPc8};

// The upper halves of the sets that are not Windows-1252 themselves, in Windows-1252; a blank where it has no such character.
// Roman-8 from code 161, as Hewlett-Packard's table of symbol sets lists it.
constexpr std::string_view kRoman8From161 =
    "\xC0\xC2\xC8\xCA\xCB\xCE\xCF\xB4`\x88\xA8\x98\xD9\xDB\xA3\xAF\xDD\xFD\xB0\xC7\xE7\xD1\xF1\xA1\xBF\xA4\xA3\xA5\xA7\x83\xA2"
    "\xE2\xEA\xF4\xFB\xE1\xE9\xF3\xFA\xE0\xE8\xF2\xF9\xE4\xEB\xF6\xFC\xC5\xEE\xD8\xC6\xE5\xED\xF8\xE6\xC4\xEC\xD6\xDC\xC9\xEF\xDF"
    "\xD4\xC1\xC3\xE3\xD0\xF0\xCD\xCC\xD3\xD2\xD5\xF5\x8A\x9A\xDA\x9F\xFF\xDE\xFE\xB7\xB5\xB6\xBE\x97\xBC\xBD\xAA\xBA\xAB "
    "\xBB\xB1";
// Code page 437 from code 128; its lines and boxes have no character here.
constexpr std::string_view kPc8From128 =
    "\xC7\xFC\xE9\xE2\xE4\xE0\xE5\xE7\xEA\xEB\xE8\xEF\xEE\xEC\xC4\xC5\xC9\xE6\xC6\xF4\xF6\xF2\xFB\xF9\xFF\xD6\xDC\xA2"
    "\xA3\xA5 \x83\xE1\xED\xF3\xFA\xF1\xD1\xAA\xBA\xBF \xAC\xBD\xBC\xA1\xAB\xBB                                      "
    "           \xDF    \xB5          \xB1    \xF7 \xB0 \xB7  \xB2  ";

std::optional<char> At(std::string_view table, int index) {
    if (index < 0 || index >= static_cast<int>(table.size()) || table[static_cast<std::size_t>(index)] == ' ')
        return std::nullopt;
    return table[static_cast<std::size_t>(index)];
}

}  // namespace

bool IsTextSymbolSet(int symbolSet) {
    return std::find(std::begin(kTextSets), std::end(kTextSets), symbolSet) != std::end(kTextSets);
}

std::optional<char> ToWindows1252(int symbolSet, unsigned char code) {
    if (code < 32 || code == 127) return std::nullopt;
    const char same = static_cast<char>(code);
    if (code < 128) return same;
    switch (symbolSet) {
        case kWindowsLatin1:
            return same;
        case kLatin1:
            return code >= 160 ? std::optional<char>(same) : std::nullopt;
        case kRoman8:
            return At(kRoman8From161, code - 161);
        case kAscii:
            return std::nullopt;
        default:
            return At(kPc8From128, code - 128);
    }
}

}  // namespace tallymar
