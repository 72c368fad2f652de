#pragma once

#include "platform/prompts/Prompts.h"
#include "store/CompanySession.h"

// The commands over whole company files. Each asks for its file, and asks before it does anything; a cancelled dialog ends it
// without a word. A company that is open stays closed once a command has closed it, whatever is answered then.
namespace tallymar {

inline constexpr std::string_view kBackupName = "Backup Company Database";
inline constexpr std::string_view kRestoreName = "Restore Company Database";
inline constexpr std::string_view kDeleteName = "Delete Company Database";

enum class FileCommandResult {
    Cancelled,  // or answered with No
    Done,
    Kept,  // the company was to be closed first, and a window would not let it go
};

// Copies a company file, whole and checked (CopyDatabase tells the failures), by preference into the Backup folder, which is made
// when it is missing. The open company is closed before the question.
FileCommandResult BackupCompany(CompanySession& session, Prompts& prompts);

// The same from the Backup folder. Closes the open company, whichever file was chosen.
FileCommandResult RestoreCompany(CompanySession& session, Prompts& prompts);

// Deletes a company file and the journal beside it, after two questions. A failure is told by a message, with the file and the
// reason under it, and the file stays.
FileCommandResult DeleteCompany(CompanySession& session, Prompts& prompts);

}  // namespace tallymar
