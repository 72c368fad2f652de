#pragma once

#include <string_view>

namespace tallymar::recordset {

// The release of the database library that the program runs with: "3.40.1".
std::string_view LibraryVersion();

}  // namespace tallymar::recordset
