#include "shell/RecentCompanies.h"

#include <algorithm>

namespace tallymar {

std::vector<std::string> WithRecent(std::vector<std::string> recent, const std::string& opened) {
    std::erase(recent, opened);
    recent.insert(recent.begin(), opened);
    recent.resize(std::min(recent.size(), kMostRecentCompanies));
    return recent;
}

}  // namespace tallymar
