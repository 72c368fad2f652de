#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "interchange/AssetImport.h"
#include "interchange/FieldDefinition.h"
#include "platform/prompts/Prompts.h"
#include "store/CompanySession.h"

namespace tallymar {

struct UserImportOptions {
    FieldDefinition Definition;
    // "Company", "Federal", "State", "Book" or "AMT". COMPAT: "Company" has no book, so its first record fails.
    std::string Book = "Federal";
    bool AddNew = false;  // a number that is taken is added under a "DUP" number; else its asset is updated
    ImportEnding Ending = ImportEnding::KeepDone;
};

// "DONE:  Assets Added = 3    Assets Updated = 0"
std::string UserImportDoneText(const ImportCounts& counts);
// "Assets Added = 3  Assets Updated = 0", after each record
std::string UserImportCountText(const ImportCounts& counts);

// Reads the assets of a comma-delimited file in the layout of the definition into one book, a row a record. A record ends after
// the definition's count of items; line ends have no further meaning.
// A failure in a record ends the import as PlatformError, its text beginning "An error 3163 has occurred during import" and
// telling the record and item and how many records are stored. onRecord hears the counts after each record's number has been
// looked for.
ImportCounts UserImport(CompanySession& session, const UserImportOptions& options, const std::filesystem::path& file,
                        const ImportProgress& onRecord = {});

}  // namespace tallymar
