#pragma once

#include <string>
#include <vector>

namespace tallymar {

inline constexpr std::size_t kMostRecentCompanies = 9;  // the digits that choose one in the menu

// The list of the companies opened last, as UTF-8 paths, after `opened` has been opened: it comes first, once, and the oldest
// goes.
std::vector<std::string> WithRecent(std::vector<std::string> recent, const std::string& opened);

}  // namespace tallymar
