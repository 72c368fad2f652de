#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/recordset/Database.h"
#include "platform/recordset/Recordset.h"
#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/PerBook.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/SequentialFile.h"
#include "store/AssetColumns.h"
#include "store/CompanySession.h"

namespace tallymar {

// What becomes of an import.
enum class ImportEnding {
    KeepDone,      // rows written before a failure stay
    AllOrNothing,  // the whole file or none of it
    CheckOnly      // everything is read and tried, and nothing is written
};

// Something that an import would not take, or would take otherwise than the file says.
struct ImportRemark {
    std::int64_t Record = 0;  // from 1; 0: every record. Of a table its line or row
    int Item = 0;             // of the record, from 1; 0: the record as a whole
    std::string Text;
    bool Fails = false;  // the import would end here; of every record: none would be taken as it was meant
    int Line = 0;        // of the company file that comes before the records, from 1; 0: it is of the records
    // Of a table whose columns have names:
    std::string_view RowWord = {};  // "line", "row"; empty: it is of records and items
    std::string Column = {};        // empty: the row as a whole
};

// "record 214, item 7: ...", "company file, line 8: ..."
std::string ImportRemarkText(const ImportRemark& remark);

struct ImportCounts {
    std::int64_t Updated = 0;
    std::int64_t Added = 0;
    std::int64_t Duplicates = 0;  // added under a "DUP" number; not among Added
    // Of CheckOnly, in the order of the file: the first thousand, and the first that fails wherever it is.
    std::vector<ImportRemark> Remarks;
    std::int64_t RemarksLeftOut = 0;  // that are not among them
    std::int64_t Failing = 0;         // of all remarks
};

// Of a check: kept as far as there is room for it.
void AddRemark(ImportCounts& counts, ImportRemark remark);

// What a check says of a file, or of a line of it, whose letters are not taken as they are meant.
inline constexpr std::string_view kLostLetters = "has characters that Windows-1252 does not have: each is taken as ?";
inline constexpr std::string_view kLooksUtf8 =
    "looks like UTF-8 without its mark: a letter beyond ASCII is taken as two or three";

// Hears the counts after each record, and what share of the file has been read, 0 to 1.
using ImportProgress = std::function<void(const ImportCounts& counts, double share)>;

// What a check has found, on the whole: "Records to add: 3    to update: 0    to add as duplicates: 0", and where the import
// would end.
std::string ImportCheckText(const ImportCounts& counts);
// A table is taken whole or not at all, and this one would not be.
bool TakesNothing(const ImportCounts& counts);

// Seeks the number and begins to edit its row, or to add one; counts which. With addNew a number that is taken gives way to the
// first free one of "DUP001", "DUP002" and so on. Gives the number that a row was added under, nothing when one is edited.
std::string OpenImportedRow(recordset::Recordset& assets, std::string_view number, bool addNew, ImportCounts& counts);
std::string DuplicateRemark(std::string_view number, std::string_view addedAs);

// The rows of Assets as an import writes them, one after the other: finds or adds the row of a number, takes the items of a
// record in the words of a file, and knows which record and item it is at when something fails. Numbers are those that a text
// starts with, 0 when it holds none; a text that is no date is date 0.
class ImportedRows {
 public:
    // book 0 has no columns of its own: writing one fails with ItemNotFound.
    ImportedRows(recordset::Recordset& assets, ImportEnding ending, ImportCounts& counts);

    void BeginRecord(int book);
    void AtItem(int item) { item_ = item; }
    std::int64_t Written() const { return written_; }

    // As OpenImportedRow.
    void Open(std::string_view number, bool addNew);
    void Update();

    void SetText(const AssetColumn& column, std::string_view text);  // FieldTooSmall when it is longer than the column
    void SetCut(const AssetColumn& column, std::string_view text, std::size_t width);  // its first characters
    void SetDescription(std::string_view text);                                        // both lines of it
    void SetDate(const AssetColumn& column, std::string_view text);
    void SetAmount(const AssetColumn& column, std::string_view text);
    void SetInteger(const AssetColumn& column, std::string_view text);
    // "Y" or `yes`; nothing else counts.
    void SetFlag(const AssetColumn& column, std::string_view text, std::string_view yes = "Y");
    void Set(const AssetColumn& column, const recordset::Value& value);

    CurrencyAmount AmountOf(std::string_view text);
    double NumberOf(std::string_view text);  // with a remark when it is none

    // A remark at the current item; kept when the import is only a check.
    void Remark(std::string text, bool fails = false);

    // Runs one record; false when the file ends within it. A failure is a remark in a check, which goes on with the next record;
    // else it goes to the caller with the record and item before its text.
    template <typename Body>
    bool Try(Body&& body) {
        try {
            body();
            return true;
        } catch (const PlatformError& failure) {
            return GoesOnAfter(failure);
        }
    }

 private:
    int Ordinal(const AssetColumn& column) const;
    bool GoesOnAfter(const PlatformError& failure);

    recordset::Recordset& assets_;
    ImportEnding ending_;
    ImportCounts& counts_;
    std::vector<std::array<int, kLastBook + 1>> ordinals_;  // by row of kAssetColumns and book
    int book_ = 0;
    std::int64_t record_ = 0;
    int item_ = 0;
    std::int64_t written_ = 0;
};

// A type or method as other programs write it.
struct ImportedCode {
    std::int16_t Index = 0;
    bool Expensed = false;  // written off at once: "179E" for a type, "EX" for a method
    bool Known = true;
};
// COMPAT: MCRS to MACS are known; anything else is MACS.
ImportedCode ImportedDeprType(std::string_view code);
// Anything that is no method is DB.
ImportedCode ImportedDeprMethod(std::string_view code);

// Runs an import as one batch over the session's assets, in the order of AssetNum. A failure of a record goes to the caller with
// `told` (given the failure's number) before its text and the count of records stored after it. `file` is what the records are
// read from.
ImportCounts RunImport(CompanySession& session, ImportEnding ending, const SequentialReader& file,
                       const std::function<std::string(int number)>& told,
                       const std::function<void(ImportedRows& rows, const ImportCounts& counts)>& body);

}  // namespace tallymar
