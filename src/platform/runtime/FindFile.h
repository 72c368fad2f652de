#pragma once

#include <filesystem>

namespace tallymar {

// The file or folder of that name below folder, as it is spelled or else in any case of its letters (files that came by way of
// other systems change theirs). The name may begin with folders of its own, such as "Laser/5662.HP", but leads nowhere else: an
// absolute name and one with ".." find nothing. Empty when there is none.
std::filesystem::path FindAnyCase(const std::filesystem::path& folder, const std::filesystem::path& name);

}  // namespace tallymar
