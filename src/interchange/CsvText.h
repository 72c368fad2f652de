#pragma once

#include <string>
#include <string_view>

namespace tallymar {

// A text as a field of a CSV, in UTF-8, that CsvReader reads back to the same: quoted where it must be, and when it is empty, to
// tell it from nothing.
void AppendCsvText(std::string_view text, std::string& line);

}  // namespace tallymar
