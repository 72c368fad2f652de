#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "formoutput/FormPages.h"
#include "formoutput/PrintPCL.h"
#include "formoutput/PrinterSettings.h"
#include "store/AppPath.h"

namespace tallymar {

// The values files that lie in the folder, in the order in which a return has the pages. codes: only these pages, each as its
// code or, of a form of one page for each asset, as the file's name without its extension ("28824102"); empty: all. Failures:
// InvalidCall for a code that no page has; FileNotFound for one without a file.
std::vector<std::string> FormPageFiles(const std::filesystem::path& folder, const std::vector<std::string>& codes);

// The pages of these values files over their blanks, as one PDF with text that can be searched and copied. Failures: those of
// reading the blanks and the values; a page without a file is its blank.
std::string FormPagesPdf(const AppPath& paths, const std::filesystem::path& folder, const std::vector<std::string>& files);

// Sends the page of a print as a PDF document of its own, to a printer that takes no PCL. Fails as Spooler and FormPagesPdf do.
void SendAsPdf(const PrintDestination& to, const AppPath& paths, const std::filesystem::path& folder, const PagePrint& print);

// Sends a page of two lines, raw or as PDF, to see whether a printer prints what it is sent. Failures: those of Spooler;
// InvalidCall for a printer that takes neither.
void SendTestPage(const PrintTarget& target);

}  // namespace tallymar
