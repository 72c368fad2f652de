#pragma once

#include "platform/pcl/SoftFont.h"

namespace tallymar::tools {

// One cell of the page's grid a character, so that rows of them join: "-" and "|" rules, "=" and "!" heavy ones, "+" a crossing,
// "1" to "9" the corners and tees of a frame as they lie on a keypad (7 the upper left corner, 5 a crossing as "+"), "o" a check
// box, "x" a marked one, "#" a black cell, "%" a grey one, ">" the arrow head of the forms.
SoftFont LineFont();

}  // namespace tallymar::tools
