#pragma once

#include <string_view>

#include "platform/recordset/Database.h"

namespace tallymar {

// Which limits a company computes with: those delivered with the program, which end with the year 2003, or those that the law
// sets for the year of each asset (law/Law.h). They are the limits of automobiles, of Section 179 and of the special allowance's
// percentage.
enum class Limits { AsDelivered, ByLaw };

// The words of the choice, as the profile shows it and as `company --set Limits=` takes it, in any letter case.
struct LimitsName {
    Limits Choice;
    std::string_view Shown;
    std::string_view Word;
};
inline constexpr LimitsName kLimitsNames[] = {{Limits::AsDelivered, "As delivered", "Delivered"},
                                              {Limits::ByLaw, "By law of the year", "Law"}};
const LimitsName& NameOf(Limits choice);
// Failure::InvalidCall for any other word.
Limits LimitsOfWord(std::string_view word);

// The choice stands in a table beside those of the assets and of the company, which only a company that has chosen has: all
// others are as delivered. Failure::TypeMismatch when the table holds what is no choice.
Limits LimitsOf(recordset::Database& database);
void SetLimits(recordset::Database& database, Limits choice);

}  // namespace tallymar
