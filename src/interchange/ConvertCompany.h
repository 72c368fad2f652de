#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "interchange/ExactTotal.h"
#include "platform/prompts/Prompts.h"
#include "platform/runtime/PlatformError.h"

// Company files of the old program, which kept them as Jet databases: a company of ours is made of one. The old file is only
// read.
namespace tallymar {

struct CompanyTotals;

struct ConvertOptions {
    std::filesystem::path Old;
    std::filesystem::path New;
    bool Replace = false;  // "?" for each character that a company cannot hold, instead of a refusal
};

// What the old file gave, and what the new one holds, which is read again from its file afterwards.
struct ConvertedCompany {
    struct Line {
        std::string What;  // "Company rows", "Assets", a column with amounts: "Basis(1)"
        std::string Old;
        std::string New;
    };
    std::vector<Line> Lines;
    bool Agrees = false;  // every line; when not, the new file has not been kept
    std::int64_t Assets = 0;

    std::vector<std::string> NotTaken;  // columns of the old file that a company does not have: "Assets.Colour"
    std::vector<std::string> NotThere;  // columns that the old file does not have: Null (False) in every row
    // Values taken as they are that no command can read: "Asset 000101, ClassLife (40000)".
    std::vector<std::string> NotReadable;
    int Replaced = 0;  // texts with a "?" in them that was none

    // Fills in the lines, and whether they agree.
    void Compare(const CompanyTotals& old, const CompanyTotals& ours);

    // For the user: how it ended, in a sentence or a few.
    std::string Summary(const ConvertOptions& options) const;
};

// Texts hold characters that a company cannot. The failure's text names them by asset and column.
class TextNotHeld : public PlatformError {
 public:
    using PlatformError::PlatformError;
};

// Makes New of Old: every column by its name, whatever the release; columns that Old lacks are as an upgrade of an old file makes
// them. New is built beside its place and put there when it is whole and agrees with Old.
//
// A failure leaves nothing: FileExists (New is there already), those of mdb::ReadJetTables, TextNotHeld; each of these
// names the asset and the column: TypeMismatch (a column of another type, a date that is none), FieldTooSmall, DuplicateKey,
// NullKey, ZeroLengthNotAllowed; those of Database.
ConvertedCompany ConvertCompany(const ConvertOptions& options, Prompts& prompts);

// "client (converted).mdb" beside "client.mdb".
std::filesystem::path ConvertedPath(const std::filesystem::path& old);

// The company file to open for the one that was chosen. A Jet file is asked about: on Yes a company is made of it beside it, or
// the one made earlier is taken, and that one's path is given; on No nullopt. Every other file is given back as it is.
std::optional<std::filesystem::path> OfferConversion(const std::filesystem::path& chosen, Prompts& prompts);

}  // namespace tallymar
