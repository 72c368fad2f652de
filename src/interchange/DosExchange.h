#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "interchange/AssetExport.h"
#include "interchange/AssetImport.h"
#include "platform/prompts/Prompts.h"
#include "store/CompanySession.h"

// The exchange with the DOS edition: a company file "ASSETCTL", one value a line, and beside it an asset file "AASCII" of
// comma-delimited records of forty items. The kinds of exchange are "Company" (both files, the records going through the books 1
// to 4 in turn) and "Federal", "State", "Book" and "AMT" (the asset file of one book).
namespace tallymar {

struct DosImportOptions {
    std::string Type = "Federal";
    bool AddNew = false;  // a number that is taken is added under a "DUP" number; else its asset is updated
    ImportEnding Ending = ImportEnding::KeepDone;
};

// What the exchange windows show beside their counts.
struct CountLine {
    std::string_view Label;
    std::int64_t Count = 0;
};
std::vector<CountLine> CountLines(const ImportCounts& counts);  // "Update Existing", "Add New", "Add Duplicate"
std::vector<CountLine> CountLines(const ExportCounts& counts);  // "Total Assets", "Assets Not Exported", "Assets Exported"

// The asset file that belongs to a company file: its name with ASSETCTL, in any letter case, replaced by AASCII. The name of a
// file that is there in another case is taken; empty when the name holds no ASSETCTL.
std::filesystem::path AssetFileOf(const std::filesystem::path& companyFile);

// Reads the chosen file. nullopt when, in the exchange of "Company", the asset file is missing: the company's profile has been
// taken then, and a message says what was looked for. All or nothing is of profile and assets together: it fails with
// FileNotFound then and takes neither. A failure in a record ends the import as PlatformError, its text beginning "An error has
// occurred during import." and telling the record and item. A check writes neither assets nor profile, and remarks on the lines
// of the company file before the records, and on an asset file that is missing.
std::optional<ImportCounts> DosImport(CompanySession& session, const DosImportOptions& options, const std::filesystem::path& file,
                                      Prompts& prompts, const ImportProgress& onRecord = {});

// Writes the chosen file. nullopt when, in the exchange of "Company", there is no asset file to write over: the company file has
// been written then, and a message says what was looked for. Failures begin "An error has occurred during Export."; but
// InvalidCall, with its own text, when the book has no year end.
// COMPAT: in the exchange of "Company" each asset is written for one book alone, the first for book 1, the second for book 2 and
// so on, though the import takes four records an asset.
std::optional<ExportCounts> DosExport(CompanySession& session, const ExportOptions& options, const std::filesystem::path& file,
                                      Prompts& prompts);

// The company file alone, its lines taken from the company's row; those not used are empty. Whole or not at all.
void WriteCompanyFile(CompanySession& session, const std::filesystem::path& file);

}  // namespace tallymar
