#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "interchange/ExactTotal.h"
#include "platform/mdb/JetFile.h"
#include "platform/prompts/Prompts.h"
#include "platform/recordset/Database.h"
#include "platform/recordset/Recordset.h"
#include "store/AssetColumns.h"

// What is done with the rows of an old company file: they are counted, and copied.
namespace tallymar {

inline constexpr std::string_view kCompanyTables[] = {"Company", "Assets"};

// For each field of one of our tables, the column of the old one with its name.
class ColumnMatch {
 public:
    static constexpr int kMissing = -1;

    // Failure::TypeMismatch when a column of that name holds values of another type.
    ColumnMatch(const recordset::TableDef& ours, const mdb::JetTable& theirs);

    const std::vector<int>& Columns() const { return columns_; }  // by field; kMissing where there is none
    const std::vector<std::string>& NotTaken() const { return notTaken_; }
    const std::vector<std::string>& NotThere() const { return notThere_; }

 private:
    std::vector<int> columns_;
    std::vector<std::string> notTaken_;
    std::vector<std::string> notThere_;
};

// Makes the tables in an empty database, and a row for each one that comes. To be run in a batch of it. The indexes other than
// the primary one are left out.
class CopyRows : public mdb::JetRows {
 public:
    CopyRows(recordset::Database& database, Prompts& prompts) : database_(database), prompts_(prompts) {}

    void Table(const mdb::JetTable& table) override;
    void Row(std::span<const mdb::JetValue> values) override;

    // Texts that could not be kept as they are, each as "Asset 000101, Description: "?" has ..."; the first few of them.
    const std::vector<std::string>& TextsNotHeld() const { return textsNotHeld_; }
    int TextsNotHeldCount() const { return textsNotHeldCount_; }
    const std::vector<std::string>& NotTaken() const { return notTaken_; }
    const std::vector<std::string>& NotThere() const { return notThere_; }
    // Values that the file holds and no command can read; each stands in the company as it is.
    const std::vector<std::string>& NotReadable() const { return notReadable_; }

 private:
    std::string PlaceOf(std::span<const mdb::JetValue> values, std::string_view field) const;
    recordset::Value Convert(const recordset::Field& field, const mdb::JetValue& value, std::span<const mdb::JetValue> row);

    void NoteUnreadable(std::size_t column, const recordset::Value& value, std::span<const mdb::JetValue> row);

    recordset::Database& database_;
    Prompts& prompts_;
    std::optional<recordset::Recordset> target_;
    std::vector<int> columns_;
    std::vector<const AssetColumn*> known_;  // by field; none for those of Company and of the books
    int key_ = ColumnMatch::kMissing;        // the old column of the asset's number
    std::optional<ProgressScope> progress_;
    std::vector<std::string> textsNotHeld_;
    int textsNotHeldCount_ = 0;
    std::vector<std::string> notTaken_;
    std::vector<std::string> notThere_;
    std::vector<std::string> notReadable_;
};

// What a file's tables hold: rows, and the total of each column with amounts.
struct CompanyTotals {
    std::int64_t CompanyRows = 0;
    std::int64_t Assets = 0;
    std::vector<ExactTotal> Columns;  // as MoneyColumns names them
};

// The columns of our table Assets that hold amounts.
const std::vector<std::string>& MoneyColumns();

// Counts what an old file gives, as it comes from the reader, and hands it on.
class CountRows : public mdb::JetRows {
 public:
    explicit CountRows(mdb::JetRows& next) : next_(next) {}

    void Table(const mdb::JetTable& table) override;
    void Row(std::span<const mdb::JetValue> values) override;

    const CompanyTotals& Totals() const { return totals_; }

 private:
    mdb::JetRows& next_;
    CompanyTotals totals_;
    bool assets_ = false;
    std::vector<int> columns_;  // by total
};

// What a company of ours holds, read from its file.
CompanyTotals TotalsOfNew(recordset::Database& database);

}  // namespace tallymar
