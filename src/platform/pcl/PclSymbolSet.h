#pragma once

#include <optional>

namespace tallymar {

// Symbol sets: which character a code stands for. The number x 32 + the letter - 64.
constexpr int PclSymbolSet(int number, char letter) {
    return number * 32 + letter - 64;
}
inline constexpr int kRoman8 = PclSymbolSet(8, 'U');
inline constexpr int kAscii = PclSymbolSet(0, 'U');
inline constexpr int kLatin1 = PclSymbolSet(0, 'N');
inline constexpr int kWindowsLatin1 = PclSymbolSet(19, 'U');
inline constexpr int kPc8 = PclSymbolSet(10, 'U');

// Does the set hold letters and figures, as far as is known here?
bool IsTextSymbolSet(int symbolSet);

// None for a code that prints nothing. The symbols of a set that is not known are read as PC-8, which a printer begins with.
std::optional<char> ToWindows1252(int symbolSet, unsigned char code);

}  // namespace tallymar
