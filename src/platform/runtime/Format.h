#pragma once

#include <string>
#include <string_view>

#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/Date.h"

namespace tallymar {

// The picture language of numbers on screens and reports: "0" a digit always, "#" a digit if there is one, "." the point, ","
// between digit places the thousands separator (after the last one: divide by a thousand), "%" times 100; anything else, quoted
// text and a character after a backslash stand for themselves. Up to three sections separated by ";": positive, negative and
// zero. A present but empty section prints what the first one prints, so "#0.0;; ;" shows zero as one blank and a negative like a
// positive with its sign.
//
// Rounds halves away from zero at the last shown digit, from the exact ten-thousandths; the section follows the sign of the value
// before rounding. A value too wide for the places runs over to the left; no digit is ever dropped.
// With one section the sign stands before all of it; the sections for negatives bring their own. An empty picture and "@" give
// the plain form of the number ("1234.5"), a double's with at most fifteen digits. Pictures hold no state and allocate only the
// result.
std::string Format(CurrencyAmount value, std::string_view picture);
std::string Format(long long value, std::string_view picture);
// For doubles that are no amounts: rounds the shortest decimal text that reads back as the same double. Failure::Overflow for
// what is no finite number.
std::string Format(double value, std::string_view picture);

// The picture language of dates, in either letter case: "m" "mm" "mmm" "mmmm", "d" "dd" "ddd" "dddd", "yy" "yyyy", "y" the day of
// the year, "h" "hh" "n" "nn" "s" "ss", "AM/PM"; "/" and ":" as they stand, "m" right after an hour means minutes. Rounded to
// the second first. Day 0 prints as the day it is, 12/30/1899. An empty picture and "@" are FormatShortDate.
std::string Format(Date value, std::string_view picture);

// "@" and the empty picture give the text as it stands; ">" upper case, "<" lower case.
std::string Format(std::string_view value, std::string_view picture);

}  // namespace tallymar
