#pragma once

#include <filesystem>
#include <string>

#include "store/AssetRecord.h"
#include "store/CompanySession.h"

namespace tallymar {

// Moves one book of the open company on by a year. Run inside one recordset::RunBatch: after a crash all of a posting is in the
// file or none. There is no way back but the copy of the file.
class YearClosing {
 public:
    YearClosing(CompanySession& session, int book);

    // Copies the company file as it was before the batch to the Backup folder, under a name that tells company, book and year
    // end. An earlier copy is never replaced. Returns the copy's path; failures as CopyDatabase.
    std::filesystem::path CopyCompanyFile();

    // The asset of the current row: current depreciation becomes previous, and the date depreciated through moves on by a year.
    void Post(AssetRecord& asset);
    // The company's year end of the book. Once, after the last asset.
    void MoveYearEnd();

 private:
    CompanySession& session_;
    int book_;
};

}  // namespace tallymar
