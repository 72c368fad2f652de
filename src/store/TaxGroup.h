#pragma once

#include <string_view>

namespace tallymar {

// An empty property group as rows hold it once they are rewritten: the column's full width of blanks, as company files have
// always had it.
inline constexpr std::string_view kBlankTaxGroup = "      ";

}  // namespace tallymar
