#include "interchange/ConvertCompany.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <utility>

#include "interchange/JetCopy.h"
#include "platform/mdb/JetFile.h"
#include "platform/recordset/Database.h"
#include "platform/recordset/DatabaseFiles.h"
#include "platform/runtime/Windows1252.h"
#include "store/Schema.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kTitle = "Tallymar";

std::string NameOf(const fs::path& path) {
    return FromUtf8(path.filename().string());
}

[[noreturn]] void AlreadyThere(const fs::path& path) {
    throw PlatformError(Failure::FileExists, FromUtf8(path.string()) + " exists already");
}

// Nobody may read the company who might not read the old file.
void TakeRights(const fs::path& old, const fs::path& company) {
    const fs::perms rights = (fs::status(old).permissions() & fs::perms(0666)) | fs::perms::owner_read | fs::perms::owner_write;
    std::error_code keptAsMade;
    fs::permissions(company, rights, keptAsMade);
}

void CreateOtherIndexes(recordset::Database& database) {
    for (const recordset::Index& index : AssetsTable().Indexes) {
        if (!index.Primary) database.CreateIndex("Assets", index);
    }
}

std::string Joined(const std::vector<std::string>& items, std::string_view between) {
    std::string text;
    for (const std::string& item : items) text += (text.empty() ? "" : std::string(between)) + item;
    return text;
}

void RefuseTexts(const CopyRows& rows) {
    const int count = rows.TextsNotHeldCount();
    const int more = count - static_cast<int>(rows.TextsNotHeld().size());
    throw TextNotHeld(Failure::TypeMismatch,
                      (count == 1 ? std::string("A text holds") : std::to_string(count) + " texts hold") +
                          " characters that Windows-1252 does not have (shown as ?): " + Joined(rows.TextsNotHeld(), "; ") +
                          (more > 0 ? "; and " + std::to_string(more) + " more" : ""));
}

// What the old file gave. The copy is one transaction. Most indexes are made after the rows: sorting once costs less than keeping
// order all the time.
CompanyTotals Copy(const ConvertOptions& options, recordset::Database& database, Prompts& prompts, ConvertedCompany& result) {
    return recordset::RunBatch(database, recordset::OnFailure::AllOrNothing, [&] {
        CopyRows rows(database, prompts);
        CountRows counted(rows);
        mdb::ReadJetTables(options.Old, kCompanyTables, counted);
        if (rows.TextsNotHeldCount() > 0 && !options.Replace) RefuseTexts(rows);
        result.Replaced = rows.TextsNotHeldCount();
        result.NotTaken = rows.NotTaken();
        result.NotThere = rows.NotThere();
        result.NotReadable = rows.NotReadable();
        CreateOtherIndexes(database);
        return counted.Totals();
    });
}

// The lines for a window, where columns do not line up by blanks.
std::string DetailsOf(const ConvertedCompany& result) {
    std::string text;
    for (const ConvertedCompany::Line& line : result.Lines) text += line.What + "\t" + line.Old + "\t" + line.New + "\n";
    return text;
}

void Tell(const ConvertOptions& options, const ConvertedCompany& result, Prompts& prompts) {
    if (!result.Agrees) throw PlatformError(Failure::DeviceError, result.Summary(options));
    prompts.MessageWithDetails(result.Summary(options), DetailsOf(result), kTitle);
}

}  // namespace

void ConvertedCompany::Compare(const CompanyTotals& old, const CompanyTotals& ours) {
    Assets = ours.Assets;
    Lines.push_back({"Company rows", std::to_string(old.CompanyRows), std::to_string(ours.CompanyRows)});
    Lines.push_back({"Assets", std::to_string(old.Assets), std::to_string(ours.Assets)});
    for (std::size_t i = 0; i < MoneyColumns().size(); ++i) {
        Lines.push_back({MoneyColumns()[i], old.Columns[i].ToText(), ours.Columns[i].ToText()});
    }
    Agrees = std::all_of(Lines.begin(), Lines.end(), [](const Line& line) { return line.Old == line.New; });
}

std::string ConvertedCompany::Summary(const ConvertOptions& options) const {
    if (!Agrees) {
        const auto first = std::find_if(Lines.begin(), Lines.end(), [](const Line& line) { return line.Old != line.New; });
        return NameOf(options.New) + " was NOT made: " + first->What + " is " + first->Old + " in " + NameOf(options.Old) +
               " and came out as " + first->New;
    }
    std::string text = NameOf(options.New) + " was made of " + NameOf(options.Old) + " with " + std::to_string(Assets) +
                       (Assets == 1 ? " asset" : " assets") + ". The counts and the sums of all " +
                       std::to_string(MoneyColumns().size()) + " columns with amounts agree.";
    if (Replaced > 0) {
        text += " " + std::to_string(Replaced) + (Replaced == 1 ? " text has" : " texts have") +
                " a \"?\" for a character that a company cannot hold.";
    }
    if (!NotReadable.empty()) {
        text += " Beyond what an asset can hold, and to be mended before anything is computed: " + NotReadable.front() +
                (NotReadable.size() > 1 ? " and " + std::to_string(NotReadable.size() - 1) + " more." : ".");
    }
    if (!NotThere.empty()) text += " Columns that the old file does not have, left empty: " + Joined(NotThere, ", ") + ".";
    if (!NotTaken.empty()) text += " Columns of the old file that were left out: " + Joined(NotTaken, ", ") + ".";
    return text;
}

ConvertedCompany ConvertCompany(const ConvertOptions& options, Prompts& prompts) {
    if (fs::exists(fs::symlink_status(options.New))) AlreadyThere(options.New);
    ConvertedCompany result;
    recordset::DatabaseReplacement file(options.New);
    CompanyTotals given;
    {
        recordset::Database database = recordset::Database::Create(file.Unfinished());
        TakeRights(options.Old, file.Unfinished());
        given = Copy(options, database, prompts, result);
    }
    {
        recordset::Database database = recordset::Database::Open(file.Unfinished());
        result.Compare(given, TotalsOfNew(database));
    }
    if (result.Agrees) file.PutInPlace();
    return result;
}

fs::path ConvertedPath(const fs::path& old) {
    return old.parent_path() / (old.stem().string() + " (converted)" + old.extension().string());
}

std::optional<fs::path> OfferConversion(const fs::path& chosen, Prompts& prompts) {
    if (!mdb::IsJetFile(chosen)) return chosen;
    ConvertOptions options{.Old = chosen, .New = ConvertedPath(chosen), .Replace = false};
    const std::string old = NameOf(options.Old);
    const std::string made = NameOf(options.New);
    const std::string what = old + " is a Jet database, as the old program kept companies in. ";
    if (fs::exists(options.New)) {
        if (!prompts.AskYesNo(what + made + " beside it was made earlier. Open that one?", kTitle)) return std::nullopt;
        return options.New;
    }
    if (!prompts.AskYesNo(what + "Make a company of it, " + made + " beside it? " + old + " stays as it is.", kTitle)) {
        return std::nullopt;
    }
    try {
        Tell(options, ConvertCompany(options, prompts), prompts);
    } catch (const TextNotHeld& failure) {
        if (!prompts.AskYesNo(std::string(failure.what()) + ". Write \"?\" in their place?", kTitle)) return std::nullopt;
        options.Replace = true;
        Tell(options, ConvertCompany(options, prompts), prompts);
    }
    return options.New;
}

}  // namespace tallymar
