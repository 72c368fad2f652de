#pragma once

#include <filesystem>

#include "store/AppPath.h"

namespace tallymar {

// Refuses as the output of a print, a PDF or a download what the forms themselves are made of, under whatever name: a page's
// values in the folder, a blank, a file of fields or a soft font, the settings of the printer. Failure::PathAccess, one line.
void RequireNoFormFile(const std::filesystem::path& output, const AppPath& paths, const std::filesystem::path& folder);

}  // namespace tallymar
