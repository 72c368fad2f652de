#pragma once

#include <optional>
#include <string>

#include "assets/AssetFields.h"
#include "platform/runtime/PlatformError.h"
#include "store/CompanySession.h"

namespace tallymar {

// The entry that keeps an asset from being stored.
struct EntryProblem {
    AssetField Field;
    std::string Text;  // "Number 000201 belongs to Engine lathe"
};

// What the database's refusal to store these fields in the row of that bookmark is due to; nullopt when it is none of the entries
// (a full disk, a locked file).
std::optional<EntryProblem> FindEntryProblem(CompanySession& company, const AssetFieldValues& values, const std::string& bookmark,
                                             const PlatformError& refusal);

}  // namespace tallymar
