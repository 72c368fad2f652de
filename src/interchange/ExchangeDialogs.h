#pragma once

#include <string_view>

#include "platform/prompts/Prompts.h"
#include "store/CompanySession.h"

// The file dialogs that imports and exports begin with.
namespace tallymar {

// type: "Company", which asks for the company file, "Federal", "State", "Book" or "AMT".
FileDialog DosImportDialog(CompanySession& session, std::string_view type);
FileDialog UserImportDialog(CompanySession& session);
FileDialog SpreadsheetDialog(CompanySession& session);
FileDialog ExportDialog(CompanySession& session, std::string_view type);  // of both exports

// Asked before an export asks for its file. False, after a message, when the book has no fiscal year end.
bool HasExportYearEnd(CompanySession& session, std::string_view book, Prompts& prompts);

}  // namespace tallymar
