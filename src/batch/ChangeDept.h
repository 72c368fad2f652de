#pragma once

#include <cstdint>
#include <string>

#include "platform/prompts/Prompts.h"
#include "store/CompanySession.h"

namespace tallymar {

// What is looked for in a field and what takes its place. A blank From matches nothing, so the field stays; a blank To clears it.
struct FieldChange {
    std::string From;
    std::string To;
};

struct ChangeDeptOptions {
    FieldChange Division;
    FieldChange Department;
    FieldChange AccountNum;
    std::string Year;  // see SelectsYear
};

// The name under which a list of changes shows the command; the window's title too.
inline constexpr std::string_view kChangeDeptName = "Change Department / Division / G/L Number";

// Renames a division, a department and a general ledger number across all assets; letter case counts. Returns how many assets
// were changed, each counted once however many of its fields moved. FieldTooSmall, before anything is written, when a To is
// longer than its column; other failures as ChangeAssets tells.
std::int64_t ChangeDept(CompanySession& session, const ChangeDeptOptions& options, Prompts& prompts);

}  // namespace tallymar
