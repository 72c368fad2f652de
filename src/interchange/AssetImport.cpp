#include "interchange/AssetImport.h"

#include <algorithm>

#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"
#include "platform/runtime/Rounding.h"
#include "platform/runtime/Val.h"
#include "platform/runtime/Windows1252.h"
#include "store/AssetPlace.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

// More remarks tell a preparer nothing that these do not, and a file may hold a million records.
constexpr std::size_t kMostRemarks = 1000;

std::string Quote(std::string_view text) {
    constexpr std::size_t kLongest = 40;
    std::string quoted = "\"" + std::string(text.substr(0, kLongest));
    return quoted + (text.size() > kLongest ? "...\"" : "\"");
}

bool HoldsNumber(std::string_view text) {
    return text.find_first_of("0123456789") != std::string_view::npos &&
           Trim(text).find_first_not_of("0123456789.+-$,()% ") == std::string_view::npos;
}

std::string Place(std::int64_t record, int item) {
    if (record == 0) return "every record";
    std::string place = "record " + std::to_string(record);
    if (item > 0) place += ", item " + std::to_string(item);
    return place;
}

std::string Place(const ImportRemark& remark) {
    if (remark.Line > 0) return "company file, line " + std::to_string(remark.Line);
    if (!remark.RowWord.empty()) {
        return std::string(remark.RowWord) + " " + std::to_string(remark.Record) +
               (remark.Column.empty() ? "" : ", column " + remark.Column);
    }
    return Place(remark.Record, remark.Item);
}

}  // namespace

std::string ImportRemarkText(const ImportRemark& remark) {
    return Place(remark) + ": " + remark.Text;
}

bool TakesNothing(const ImportCounts& counts) {
    return counts.Failing > 0 && !counts.Remarks.front().RowWord.empty();
}

std::string ImportCheckText(const ImportCounts& counts) {
    std::string text = "Records to add: " + std::to_string(counts.Added) + "    to update: " + std::to_string(counts.Updated) +
                       "    to add as duplicates: " + std::to_string(counts.Duplicates);
    const auto failing =
        std::find_if(counts.Remarks.begin(), counts.Remarks.end(), [](const ImportRemark& remark) { return remark.Fails; });
    if (TakesNothing(counts)) {
        text += "\nNothing of the file would be taken: " + std::to_string(counts.Failing) +
                (counts.Failing == 1 ? " value fails" : " values fail");
    } else if (failing != counts.Remarks.end()) {
        const bool ofAll = failing->Record == 0 && failing->Line == 0;
        text += ofAll ? "\nNo record would be taken as it was meant" : "\nThe import would end at " + Place(*failing);
    }
    if (counts.Remarks.empty()) text += "\nEverything would be taken as it stands in the file";
    return text;
}

std::string DuplicateRemark(std::string_view number, std::string_view addedAs) {
    return "asset " + std::string(RTrim(number)) + " is there already: added as " + std::string(addedAs);
}

std::string OpenImportedRow(recordset::Recordset& assets, std::string_view number, bool addNew, ImportCounts& counts) {
    assets.Seek(number);
    if (!assets.NoMatch() && !addNew) {
        assets.Edit();
        ++counts.Updated;
        return {};
    }
    std::string key(number);
    if (assets.NoMatch()) {
        ++counts.Added;
    } else {
        for (long long n = 1; !assets.NoMatch(); ++n) {
            key = "DUP" + Format(n, pictures::kNewNumber);
            assets.Seek(key);
        }
        ++counts.Duplicates;
    }
    assets.AddNew();
    assets.Set(std::string(ColumnOf(&AssetRecord::AssetNum).Name), key);
    return key;
}

void AddRemark(ImportCounts& counts, ImportRemark remark) {
    const bool isFirstFailure = remark.Fails && counts.Failing == 0;
    counts.Failing += remark.Fails ? 1 : 0;
    if (counts.Remarks.size() >= kMostRemarks && !isFirstFailure) {
        ++counts.RemarksLeftOut;
        return;
    }
    counts.Remarks.push_back(std::move(remark));
}

ImportedRows::ImportedRows(recordset::Recordset& assets, ImportEnding ending, ImportCounts& counts)
    : assets_(assets), ending_(ending), counts_(counts) {
    for (const AssetColumn& column : kAssetColumns) {
        std::array<int, kLastBook + 1> ordinals{};
        ordinals.fill(-1);
        if (!column.IsPerBook()) ordinals.fill(assets.Ordinal(column.Name));
        for (int book = kFirstBook; column.IsPerBook() && book <= kLastBook; ++book) {
            ordinals.at(static_cast<std::size_t>(book)) = assets.Ordinal(ColumnName(column, book));
        }
        ordinals_.push_back(ordinals);
    }
}

void ImportedRows::BeginRecord(int book) {
    book_ = book;
    ++record_;
    item_ = 0;
}

void ImportedRows::Open(std::string_view number, bool addNew) {
    const std::int64_t duplicates = counts_.Duplicates;
    const std::string added = OpenImportedRow(assets_, number, addNew, counts_);
    if (counts_.Duplicates > duplicates) Remark(DuplicateRemark(number, added));
}

void ImportedRows::Update() {
    assets_.Update();
    ++written_;
}

void ImportedRows::SetText(const AssetColumn& column, std::string_view text) {
    Set(column, text);
}

void ImportedRows::SetCut(const AssetColumn& column, std::string_view text, std::size_t width) {
    if (RTrim(text).size() > width)
        Remark(std::string(column.Name) + " " + Quote(text) + " is cut to " + std::to_string(width) + " characters");
    Set(column, text.substr(0, width));
}

void ImportedRows::SetDescription(std::string_view text) {
    const auto width = static_cast<std::size_t>(ColumnOf(&AssetRecord::Description).Width());
    Set(ColumnOf(&AssetRecord::Description), text.substr(0, width));
    Set(ColumnOf(&AssetRecord::Descrip2), text.size() > width ? text.substr(width) : std::string_view());
}

void ImportedRows::SetDate(const AssetColumn& column, std::string_view text) {
    const Date date = TextToDate(text);
    if (date == Date() && !Trim(text).empty())
        Remark(std::string(column.Name) + " " + Quote(text) + " is no date: none is stored");
    Set(column, date);
}

void ImportedRows::SetAmount(const AssetColumn& column, std::string_view text) {
    Set(column, AmountOf(text));
}

void ImportedRows::SetInteger(const AssetColumn& column, std::string_view text) {
    Set(column, ToInteger(NumberOf(text)));
}

void ImportedRows::SetFlag(const AssetColumn& column, std::string_view text, std::string_view yes) {
    if (!text.empty() && text != "Y" && text != "N" && text != yes) Remark(Quote(text) + " is neither Y nor N: taken as No");
    Set(column, text == yes);
}

void ImportedRows::Set(const AssetColumn& column, const recordset::Value& value) {
    assets_.Set(Ordinal(column), value);
}

CurrencyAmount ImportedRows::AmountOf(std::string_view text) {
    return CurrencyAmount::FromDouble(NumberOf(text));
}

double ImportedRows::NumberOf(std::string_view text) {
    const double number = Val(text);
    if (!Trim(text).empty() && (!HoldsNumber(text) || text.find_first_of("$,()%") != std::string_view::npos)) {
        Remark(Quote(text) + " is read as the number " + CurrencyAmount::FromDouble(number).ToText());
    }
    return number;
}

void ImportedRows::Remark(std::string text, bool fails) {
    if (ending_ != ImportEnding::CheckOnly) return;
    AddRemark(counts_, {.Record = record_, .Item = item_, .Text = std::move(text), .Fails = fails});
}

int ImportedRows::Ordinal(const AssetColumn& column) const {
    const int ordinal =
        ordinals_.at(static_cast<std::size_t>(&column - kAssetColumns.data())).at(static_cast<std::size_t>(book_));
    if (ordinal >= 0) return ordinal;
    throw PlatformError(Failure::ItemNotFound,
                        std::string(FailureText(Failure::ItemNotFound)) + ": " + ColumnName(column, book_));
}

bool ImportedRows::GoesOnAfter(const PlatformError& failure) {
    if (assets_.EditPending()) assets_.CancelUpdate();
    if (ending_ != ImportEnding::CheckOnly) throw PlatformError(failure.Code(), Place(record_, item_) + ": " + failure.what());
    Remark(failure.what(), true);
    return failure.Code() != Failure::InputPastEnd;
}

ImportedCode ImportedDeprType(std::string_view code) {
    if (code == "179E") return {.Index = kMcrs, .Expensed = true};
    for (std::int16_t type = kMcrs; type <= kMacs; ++type) {
        if (code == DeprTypeCode(type)) return {.Index = type};
    }
    return {.Index = kMacs, .Known = false};
}

ImportedCode ImportedDeprMethod(std::string_view code) {
    if (code == "EX") return {.Index = kDb, .Expensed = true};
    const auto found = std::find(kDeprMethods.begin(), kDeprMethods.end(), code);
    if (found == kDeprMethods.end()) return {.Index = kDb, .Known = false};
    return {.Index = static_cast<std::int16_t>(found - kDeprMethods.begin())};
}

ImportCounts RunImport(CompanySession& session, ImportEnding ending, const SequentialReader& file,
                       const std::function<std::string(int number)>& told,
                       const std::function<void(ImportedRows& rows, const ImportCounts& counts)>& body) {
    using recordset::OnFailure;
    ImportCounts counts;
    recordset::Recordset& assets = session.AssetsRecordset();
    const AssetPlace place(assets);
    std::int64_t stored = 0;
    try {
        const OnFailure onFailure = ending == ImportEnding::KeepDone ? OnFailure::KeepDone : OnFailure::AllOrNothing;
        recordset::RunBatch(session.Database(), onFailure, [&](recordset::WriteBatch& batch) {
            ImportedRows rows(assets, ending, counts);
            if (file.HasLostLetters()) rows.Remark("the file " + std::string(kLostLetters));
            if (ending == ImportEnding::CheckOnly && file.LooksUtf8()) rows.Remark("the file " + std::string(kLooksUtf8));
            try {
                body(rows, counts);
            } catch (const PlatformError&) {
                if (onFailure == OnFailure::KeepDone) stored = rows.Written();
                throw;
            }
            if (ending == ImportEnding::CheckOnly) batch.Rollback();
        });
    } catch (const recordset::BatchTakenBack& failure) {
        throw PlatformError(failure.Code(), told(failure.Number()) + "\n" + failure.what());
    } catch (const PlatformError& failure) {
        throw PlatformError(failure.Code(), told(failure.Number()) + "\n" + failure.what() +
                                                "\nRecords stored before it: " + std::to_string(stored));
    }
    return counts;
}

}  // namespace tallymar
