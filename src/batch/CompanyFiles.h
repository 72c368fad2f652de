#pragma once

#include <string>

#include "platform/prompts/Prompts.h"
#include "store/CompanySession.h"

// The commands over whole company files. Each asks for its file, and asks before it does anything; a cancelled dialog ends it
// without a word. A company that is open stays closed once a command has closed it, whatever is answered then. Each returns what
// it has done in one line ("client.mdb was copied to ..."), empty when nothing was.
namespace tallymar {

// Copies a company file, whole and checked (CopyDatabase tells the failures), by preference into the Backup folder, which is made
// when it is missing. The open company is closed before the question. Of a file of the old program, the company that is made of
// it is copied, if the session's ChosenFile offers one and the offer is taken.
std::string BackupCompany(CompanySession& session, Prompts& prompts);

// The same from the Backup folder. Closes the open company, whichever file was chosen.
std::string RestoreCompany(CompanySession& session, Prompts& prompts);

// Deletes a company file and the journal beside it, after two questions. A failure is told by a message, with the file and the
// reason under it, and the file stays.
std::string DeleteCompany(CompanySession& session, Prompts& prompts);

}  // namespace tallymar
