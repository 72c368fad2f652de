#pragma once

#include <string_view>

namespace tallymar {

// The release with the commit that it was built from and that commit's day: "1.4 (26d6e4e, 2026-11-23)". The release alone where
// neither is known.
std::string_view ProgramVersion();

}  // namespace tallymar
