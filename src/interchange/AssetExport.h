#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "interchange/ExportItems.h"
#include "platform/prompts/Prompts.h"
#include "store/CompanySession.h"

// What the two exports of assets as comma-delimited text share.
namespace tallymar {

struct ExportOptions {
    std::string Book = "Federal";  // "Company", "Federal", "State", "Book" or "AMT"
    // Blank: all. The year is a year of life as of the book's fiscal year end, 1 being the first; the others are compared with
    // what the asset has, letter case counting.
    std::string Year{};
    std::string Division{};
    std::string Department{};
};

struct ExportCounts {
    std::int64_t Total = 0;
    std::int64_t NotExported = 0;  // of another division or department; an asset of another year counts in Total alone
    std::int64_t Exported = 0;
};

// The year end of the book ("Company" takes the Federal one). InvalidCall, with the text that the report options show, when the
// profile has none.
Date ExportYearEnd(CompanySession& session, std::string_view book);

// Writes the selected assets, in the order of AssetNum, as `line` gives them (Windows-1252, line end included). Of each asset of
// the company, selected or not, `book` is asked which book it is to be written for.
// COMPAT: the file is there whole or not at all; an export that fails leaves the earlier one and not what it had written.
// Failures: those of reading the company and of FileReplacement.
ExportCounts WriteAssets(CompanySession& session, const ExportOptions& options, const std::filesystem::path& file,
                         Prompts& prompts, const std::function<int()>& book,
                         const std::function<void(const ExportedAsset& asset, std::string& line)>& line);

// A date as its plain text, nothing for one that begins "12:00", as date 0 does.
std::string ExportDate(Date date);

constexpr std::string_view YesOrNo(bool flag) {
    return flag ? "Y" : "N";
}

}  // namespace tallymar
