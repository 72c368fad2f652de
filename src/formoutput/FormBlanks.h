#pragma once

#include <filesystem>
#include <string>

#include "formoutput/FormPages.h"
#include "platform/pcl/SoftFont.h"
#include "store/AppPath.h"

namespace tallymar {

// The soft fonts of the blanks, as a printer holds them after a download: the firm's own or the delivered ones. What is missing
// or cannot be read is left out; texts in it are shown in a page font.
SoftFonts LoadSoftFonts(const AppPath& paths);

// A file of a printer's commands, a blank or a soft font. Failures: those of ReadWholeFile; PathAccess for one longer than
// kLongestBlank.
std::string ReadPrinterFile(const std::filesystem::path& path);

// The blank of a page as it is sent to the printer. Failures: FileNotFound; those of ReadPrinterFile.
std::string BlankStream(const AppPath& paths, const FormPageInfo& page);

inline constexpr std::size_t kLongestBlank = 4 * 1024 * 1024;

}  // namespace tallymar
