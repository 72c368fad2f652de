#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/prompts/Prompts.h"
#include "store/CompanySession.h"

namespace tallymar {

struct ResequenceOptions {
    std::string Division;
    std::string Department;
    std::string CopyOnly = "N";  // "Y": the assets that the two filters select; "N": every asset; anything else: none
    bool IgnoreCase = true;      // of the filters
    bool Renumber = false;       // Prefix and a count from 1, in order of in-service date
    std::string Prefix;          // at most PrefixLimit characters
};

struct ResequenceCounts {
    std::int64_t Added = 0;
    std::int64_t Changed = 0;  // numbers that the target held already: their rows are overwritten

    // "3 Assets added and 0 Assets changed"
    std::string Text() const;
};

inline constexpr std::string_view kResequenceName = "Resequence Asset Numbers";

// How many characters a prefix may have in a company of so many assets.
// COMPAT: 4 up to 99 assets and 3 above, however many more there are, so a prefix of three overflows six characters from the
// 1,000th asset on.
int PrefixLimit(std::int64_t assetCount);

// "Static Characters limited to 4 characters"
std::string PrefixLimitText(std::int64_t assetCount);

// The dialog that chooses the company to copy into.
FileDialog ResequenceDialog(const std::filesystem::path& initialFolder);

// Copies assets of the open company, which stays as it is (COMPAT: AssocAsset too, so that it names old numbers), into the
// company `target`: a new one when there is no such file, else one that it merges into by number. All of it is one batch: on any
// failure the target is as it was, or not there. Failures, each told with the asset where one is at fault: InvalidCall when the
// target is the open company or the prefix is too long; FieldTooSmall when a new number has more than six characters;
// ItemNotFound when the target lacks a column, as a file of an earlier release does until it has been opened once; those of
// opening and writing a company. nullopt when the session's ChosenFile takes the target for no company and offers none instead.
std::optional<ResequenceCounts> Resequence(CompanySession& session, const ResequenceOptions& options,
                                           const std::filesystem::path& target, Prompts& prompts);

}  // namespace tallymar
