#pragma once

#include <filesystem>

#include "loans/Loan.h"
#include "platform/prompts/Prompts.h"

namespace tallymar {

inline constexpr std::string_view kUntitledLoan = "Untitled";

// The dialog that a loan file is opened or saved with.
FileDialog LoanFileDialog(std::string_view title, const std::filesystem::path& folder);

// Does its name say that the file is a loan: ".lon", in any case of the letters?
bool IsLoanFileName(const std::filesystem::path& file);

// The texts of a loan file: eleven lines, each a quoted text as it stands in its box, quotes within it doubled; Windows-1252.
// Failures, each naming the file: those of opening it; InputPastEnd when it is cut short; UnrecognizedFormat when it is anything
// else than a loan.
LoanTexts OpenLoanFile(const std::filesystem::path& file);

// Writes the file, an existing one after asking. False when it shall not be overwritten. Fails with a text that asks to retry;
// the earlier file is then as it was.
bool CloseLoanFile(const std::filesystem::path& file, const LoanTexts& texts, Prompts& prompts);

}  // namespace tallymar
