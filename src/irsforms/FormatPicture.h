#pragma once

#include <string>
#include <string_view>

#include "platform/runtime/CurrencyAmount.h"

namespace tallymar {

// The picture language of the form pages: "#" and "0" are digit places, "," stands between them, at most one "." is the point,
// and anything else, such as "(" and ")", stands for itself. The result is as wide as the mask: digits fill its places from the
// right, blanks take unused "#" and "," up to the first other character from the digits leftwards, the sign stands left of the
// number. An amount too wide for the mask shows "%" at the first position and its low digits; a sign that finds no place is
// dropped.
//
// Rounds to the places after the point, ties to even; where the mask has a point and no place after it, ties away from zero. An
// amount between -1 and 0 has no digit before the point: "  -.25". A picture that cannot be filled gives "*ERROR*".
std::string FormatPicture(CurrencyAmount amount, std::string_view mask);

}  // namespace tallymar
