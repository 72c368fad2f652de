#pragma once

#include <cstdint>
#include <string>

#include "platform/prompts/Prompts.h"
#include "store/CompanySession.h"

namespace tallymar {

struct SetBooksOptions {
    int FromBook = 1;
    int ToBook = 0;          // 0: every other book; below 0: none, though the assets count
    std::string Division;    // blank: every division
    std::string Department;  // blank: every department
    std::string Year;        // see SelectsYear
};

inline constexpr std::string_view kSetBooksName = "Set ALL Books Equal";

// Copies one book's set-up and amounts over another or all others, DeprLimit excepted. Returns how many assets were selected and
// rewritten. Fails with InvalidCall for a FromBook outside 1 to 4 or a ToBook above 4; else as ChangeAssets tells.
std::int64_t SetBooks(CompanySession& session, const SetBooksOptions& options, Prompts& prompts);

}  // namespace tallymar
