#pragma once

#include <string>
#include <string_view>

namespace tallymar {

// What whoever writes the values file of a form page and whoever reads it must agree on.

// Printing drops so many characters of each line.
inline constexpr int kDroppedByPrinting = 2;
// Behind the last line.
inline constexpr char kEndOfFileMark = '\x1A';

// What the first line of the page's file says: a backslash twice and the code.
inline std::string FirstLineOfPage(std::string_view code) {
    // COMPAT: this one says another code. Nothing reads it.
    if (code == "245622") code = "145622";
    return "\\\\" + std::string(code);
}

// COMPAT: the right two digits of a sequence, so that from the hundredth page on the names begin again.
inline std::string PageSequenceText(int sequence) {
    const std::string digits = "00" + std::to_string(sequence);
    return digits.substr(digits.size() - 2);
}

}  // namespace tallymar
