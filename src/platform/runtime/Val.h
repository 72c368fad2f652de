#pragma once

#include <string_view>

namespace tallymar {

// The number that a text starts with: leading blanks are passed over, blanks between digits too; reading stops at the first
// character that is no part of a number, so "12ab" is 12, "1,234" is 1, "" is 0. "1E3" and "1D3" are 1000, "&H1F" is 31, "&O17"
// is
// 15. Fails with Failure::Overflow beyond the doubles ("1E400").
double Val(std::string_view text);

}  // namespace tallymar
