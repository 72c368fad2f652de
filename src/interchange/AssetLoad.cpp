#include "interchange/AssetLoad.h"

#include <algorithm>
#include <bitset>
#include <optional>
#include <span>
#include <unordered_map>
#include <utility>

#include "assets/AssetFields.h"
#include "interchange/FieldText.h"
#include "interchange/Headings.h"
#include "interchange/TableFile.h"
#include "platform/recordset/Names.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "store/AssetColumns.h"
#include "store/AssetRecordAccess.h"

namespace tallymar {

namespace {

using recordset::Value;

constexpr std::string_view kKey = "AssetNum";

// One column of the file: where its values go in the table.
struct Column {
    std::size_t Place = 0;  // in the file, from 0
    int Ordinal = 0;
    recordset::Field Field;
    const AssetColumn* Known = nullptr;           // none: another program's column in the company file
    std::span<const std::string_view> Entries{};  // of the list that the asset form shows it as
};

// The file as rows of values, each complaint with its place.
class AssetFile {
 public:
    AssetFile(const std::filesystem::path& path, const recordset::Recordset& assets, const std::vector<HeadingPair>& pairs)
        : table_(OpenTable(path)) {
        ReadHeader(assets, pairs);
    }

    const std::vector<Column>& Columns() const { return columns_; }

    // Calls each(values) for every row, values in the order of Columns. The first complaint ends it.
    template <typename Each>
    void ForEachRow(Each each) {
        Start();
        while (ReadRow()) {
            CheckWidth();
            for (std::size_t i = 0; i < columns_.size(); ++i) {
                values_[i] = Named(i, [&] { return Convert(i); });
            }
            each(values_);
        }
    }

    // The same of the rows that can be taken; complaint(remark) hears what is wrong with each of the others.
    template <typename Each, typename Complaint>
    void ForEachGoodRow(Each each, Complaint complaint) {
        Start();
        while (ReadRow()) {
            bool good = true;
            const auto hear = [&](const std::string& column, const PlatformError& failure) {
                good = false;
                complaint(RemarkOf(column, failure.what(), true));
            };
            if (const std::string complaintOfWidth = WidthComplaint(); !complaintOfWidth.empty()) {
                hear("", PlatformError(Failure::TypeMismatch, complaintOfWidth));
                continue;
            }
            for (std::size_t i = 0; i < columns_.size(); ++i) {
                try {
                    values_[i] = Convert(i);
                } catch (const PlatformError& failure) {
                    hear(columns_[i].Field.Name, failure);
                }
            }
            if (good) each(values_);
        }
    }

    std::size_t KeyColumn() const { return keyColumn_; }
    double ShareRead() const { return table_->ShareRead(); }

    // Of the current row.
    ImportRemark RemarkOf(const std::string& column, std::string text, bool fails) const {
        return {
            .Record = row_.front().Line, .Text = std::move(text), .Fails = fails, .RowWord = table_->RowWord(), .Column = column};
    }

    // The number of the current row has stood in the file before.
    [[noreturn]] void FailAsRepeated() {
        const TableField repeated = row_[columns_[keyColumn_].Place];
        const std::string key = KeyOf(repeated);
        Start();
        while (ReadRow() && !recordset::SameName(KeyOf(row_[columns_[keyColumn_].Place]), key)) continue;
        const int earlier = row_[columns_[keyColumn_].Place].Line;
        row_[columns_[keyColumn_].Place] = repeated;
        Fail(keyColumn_, PlatformError(Failure::DuplicateKey, RepeatedText(key) + " in " + std::string(table_->RowWord()) + " " +
                                                                  std::to_string(earlier) + " already"));
    }
    std::string RepeatedText() const { return RepeatedText(KeyOf(row_[columns_[keyColumn_].Place])) + " in the file already"; }

 private:
    static std::string KeyOf(const TableField& field) { return std::string(RTrim(FromUtf8(field.Text))); }
    static std::string RepeatedText(const std::string& key) { return "asset " + key + " is"; }

    void Start() {
        table_->Rewind();
        table_->ReadRow(row_);
        values_.resize(columns_.size());
        texts_.resize(columns_.size());
    }

    // The next with anything in it: below a table spreadsheet programs keep rows of formulas that give nothing, or write commas.
    bool ReadRow() {
        const auto isEmpty = [](const TableField& field) { return field.Text.empty(); };
        while (table_->ReadRow(row_)) {
            if (!std::all_of(row_.begin(), row_.end(), isEmpty)) return true;
        }
        return false;
    }

    void ReadHeader(const recordset::Recordset& assets, const std::vector<HeadingPair>& pairs) {
        const std::string& name = table_->Name();
        if (!table_->ReadRow(row_)) {
            throw PlatformError(Failure::ItemNotFound,
                                name + ": the file is empty; its first " + std::string(table_->RowWord()) + " must name columns");
        }
        if (row_.front().Text.starts_with("SQLite format"))
            throw PlatformError(Failure::InvalidCall, name + " is a company file, no CSV");
        width_ = row_.size();
        const Headings headings(assets.Definition());
        for (std::size_t i = 0; i < row_.size(); ++i) {
            const std::string where = PlaceOf(i) + ", column " + std::to_string(i + 1) + ": ";
            const std::optional<std::string> column = ColumnOf(i, pairs, headings, where);
            if (!column) continue;
            const int ordinal = assets.Ordinal(*column);
            for (const Column& earlier : columns_) {
                if (earlier.Ordinal == ordinal)
                    throw PlatformError(Failure::DuplicateKey, where + "the header names " + *column + " twice");
            }
            if (*column == kKey) {
                keyColumn_ = columns_.size();
                hasKey_ = true;
            }
            const AssetColumn* known = FindAssetColumn(*column);
            columns_.push_back({.Place = i,
                                .Ordinal = ordinal,
                                .Field = *assets.Definition().FindField(*column),
                                .Known = known,
                                .Entries = EntriesOf(known)});
        }
        if (!hasKey_) throw PlatformError(Failure::ItemNotFound, PlaceOf(0) + ": the header does not name " + std::string(kKey));
    }

    // nullopt: not taken.
    std::optional<std::string> ColumnOf(std::size_t place, const std::vector<HeadingPair>& pairs, const Headings& headings,
                                        const std::string& where) const {
        const std::string heading = FromUtf8(row_[place].Text);
        const auto isSame = [&](const std::string& other) { return recordset::SameName(Trim(other), Trim(heading)); };
        // Of headings that are the same the first has the first pair, and so on.
        auto earlier = std::count_if(row_.begin(), row_.begin() + static_cast<std::ptrdiff_t>(place),
                                     [&](const TableField& cell) { return isSame(FromUtf8(cell.Text)); });
        const HeadingPair* chosen = nullptr;
        for (const HeadingPair& pair : pairs) {
            if (!isSame(pair.Heading)) continue;
            chosen = &pair;
            if (earlier-- == 0) break;
        }
        if (chosen != nullptr && chosen->Column.empty()) return std::nullopt;
        const std::string& asked = chosen != nullptr ? chosen->Column : heading;
        const std::vector<std::string> columns = headings.Named(asked);
        if (columns.size() == 1) return columns.front();
        const std::string quoted = QuotedFieldText(ToUtf8(asked));
        const std::vector<std::string> labels = headings.LabelsLike(asked);
        if (labels.empty()) throw PlatformError(Failure::ItemNotFound, where + "the table has no column " + quoted);
        std::string choice;
        for (const std::string& label : labels) choice += (choice.empty() ? "\"" : " or \"") + label + "\"";
        throw PlatformError(Failure::ItemNotFound, where + quoted + " does not say which: write " + choice);
    }

    static std::span<const std::string_view> EntriesOf(const AssetColumn* known) {
        for (const AssetFieldDef& field : AssetFields()) {
            if (known != nullptr && field.Stored == known->Member) return field.Entries;
        }
        return {};
    }

    std::string PlaceOf(std::size_t place) const {
        return table_->Name() + ", " + std::string(table_->RowWord()) + " " + std::to_string(row_[place].Line);
    }

    [[noreturn]] void Fail(std::size_t column, const PlatformError& failure) const {
        throw failure.WithPrefix(PlaceOf(columns_[column].Place) + ", column " + columns_[column].Field.Name + ": ");
    }

    template <typename Body>
    Value Named(std::size_t column, Body body) const {
        try {
            return body();
        } catch (const PlatformError& failure) {
            Fail(column, failure);
        }
    }

    std::string WidthComplaint() const {
        if (row_.size() == width_) return {};
        return "the row has " + std::to_string(row_.size()) + " fields where the header has " + std::to_string(width_);
    }
    void CheckWidth() const {
        const std::string complaint = WidthComplaint();
        if (complaint.empty()) return;
        std::string place = std::to_string(std::min(row_.size(), width_) + 1);
        for (const Column& column : columns_) {
            if (column.Place == row_.size()) place = column.Field.Name;
        }
        throw PlatformError(Failure::TypeMismatch, PlaceOf(row_.size() - 1) + ", column " + place + ": " + complaint);
    }

    // Texts stay good until the next row.
    Value Convert(std::size_t i) {
        const Column& column = columns_[i];
        const TableField& cell = row_[column.Place];
        if (cell.Form == FieldForm::None) throw PlatformError(Failure::TypeMismatch, "the cell holds " + cell.Text);
        if (i == keyColumn_) return ConvertKey(cell);
        // A quoted nothing, or what a formula gives for it, is an empty text; of another column it is nothing at all.
        if (cell.IsNull || (cell.Text.empty() && column.Field.Type != recordset::FieldType::Text))
            return NullFieldValue(column.Field);
        if (cell.Form == FieldForm::Date) RequireDates(column.Field, cell);
        const Value value = Parse(column, cell.Text, texts_[i]);
        RequireUsable(column, value, cell.Text);
        return value;
    }

    static void RequireDates(const recordset::Field& field, const TableField& cell) {
        if (field.Type != recordset::FieldType::Date)
            throw PlatformError(Failure::TypeMismatch, QuotedFieldText(cell.Text) + " is a date; the column holds none");
    }

    static Value Parse(const Column& column, std::string_view text, std::string& buffer) {
        try {
            return ParseFieldText(column.Field, text, buffer);
        } catch (const PlatformError&) {
            const auto entry = std::find_if(column.Entries.begin(), column.Entries.end(), [text](std::string_view each) {
                return !each.empty() && recordset::SameName(each, text);
            });
            if (entry == column.Entries.end()) throw;
            if (column.Field.Type == recordset::FieldType::Integer)
                return Value(static_cast<std::int16_t>(entry - column.Entries.begin()));
            return Value(buffer = entry->substr(0, static_cast<std::size_t>(column.Field.Size)));
        }
    }

    // A value that the column takes and that the asset, once read, could not hold would end every later command.
    static void RequireUsable(const Column& column, const Value& value, std::string_view text) {
        if (column.Known == nullptr) return;
        try {
            RequireReadable(*column.Known, value);
        } catch (const PlatformError& failure) {
            throw PlatformError(failure.Code(), QuotedFieldText(text) + " is beyond what an asset can hold");
        }
    }

    Value ConvertKey(const TableField& cell) {
        if (cell.IsNull) throw PlatformError(Failure::NullKey, "every asset needs a number");
        if (cell.Form == FieldForm::Date) RequireDates(columns_[keyColumn_].Field, cell);
        const Value key = ParseFieldText(columns_[keyColumn_].Field, cell.Text, texts_[keyColumn_]);
        const std::string_view text = key.Text();
        if (RTrim(text).empty()) throw PlatformError(Failure::NullKey, "every asset needs a number that is not blank");
        if (std::any_of(text.begin(), text.end(), IsControl)) {
            throw PlatformError(Failure::InvalidCall, "a number may not hold a control character");
        }
        return key;
    }

    std::unique_ptr<TableFile> table_;
    std::vector<Column> columns_;
    std::size_t width_ = 0;  // of the header
    std::size_t keyColumn_ = 0;
    bool hasKey_ = false;
    std::vector<TableField> row_;
    std::vector<Value> values_;
    std::vector<std::string> texts_;  // Windows-1252, by column
};

// Which rows of the table the file has written. What counts as the same number is for the table's index alone to say, so each
// number is sought there, and the row that is found tells whether it has come before: those added here have higher row numbers
// than any before, and of the others one bit is kept.
class WrittenRows {
 public:
    explicit WrittenRows(recordset::Recordset& assets) {
        assets.SetIndex("");
        assets.MoveLast();
        if (assets.HasCurrentRow()) lastBefore_ = assets.RowNumber();
    }

    // False when the file has written the row before.
    bool Add(std::int64_t row) {
        if (row > lastBefore_) return false;
        auto bit = rewritten_[row / kBlock][static_cast<std::size_t>(row % kBlock)];
        if (bit) return false;
        return bit = true;
    }

 private:
    static constexpr std::int64_t kBlock = 4096;

    std::int64_t lastBefore_ = 0;
    std::unordered_map<std::int64_t, std::bitset<kBlock>> rewritten_;
};

class Loading {
 public:
    Loading(AssetFile& file, recordset::Recordset& assets, const LoadOptions& options, ImportCounts& counts)
        : file_(file), assets_(assets), options_(options), counts_(counts), written_(assets) {
        assets.SetIndex(kKey);
    }

    // False when its number has stood in the file before, and rewriting would undo what the file has said itself.
    bool Write(const std::vector<Value>& values) {
        const Value& number = values[file_.KeyColumn()];
        const std::int64_t duplicates = counts_.Duplicates;
        const std::string added = OpenImportedRow(assets_, number.Text(), options_.AddNew, counts_);
        const bool isDuplicate = counts_.Duplicates > duplicates;
        if (added.empty() && !written_.Add(assets_.RowNumber())) {
            assets_.CancelUpdate();
            --counts_.Updated;
            return false;
        }
        if (isDuplicate && options_.CheckOnly)
            AddRemark(counts_, file_.RemarkOf(std::string(kKey), DuplicateRemark(number.Text(), added), false));
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (!isDuplicate || i != file_.KeyColumn()) assets_.Set(file_.Columns()[i].Ordinal, values[i]);
        }
        assets_.Update();
        return true;
    }

 private:
    AssetFile& file_;
    recordset::Recordset& assets_;
    const LoadOptions& options_;
    ImportCounts& counts_;
    WrittenRows written_;
};

}  // namespace

ImportCounts LoadAssets(recordset::Database& database, recordset::Recordset& assets, const std::filesystem::path& path,
                        const LoadOptions& options, const ImportProgress& progress) {
    ImportCounts counts;
    AssetFile file(path, assets, options.Pairs);
    // The file is read twice, unless it is only looked at.
    const double half = options.CheckOnly ? 1.0 : 0.5;
    const auto report = [&](double before) {
        if (progress) progress(counts, before + half * file.ShareRead());
    };
    if (!options.CheckOnly) file.ForEachRow([&](const std::vector<Value>&) { report(0); });
    try {
        recordset::RunBatch(database, recordset::OnFailure::AllOrNothing, [&](recordset::WriteBatch& batch) {
            Loading loading(file, assets, options, counts);
            if (options.CheckOnly) {
                const auto complain = [&](ImportRemark remark) { AddRemark(counts, std::move(remark)); };
                const auto write = [&](const std::vector<Value>& values) {
                    if (!loading.Write(values)) complain(file.RemarkOf(std::string(kKey), file.RepeatedText(), true));
                    report(0);
                };
                file.ForEachGoodRow(write, complain);
                batch.Rollback();
            } else {
                file.ForEachRow([&](const std::vector<Value>& values) {
                    if (!loading.Write(values)) file.FailAsRepeated();
                    report(half);
                });
            }
        });
    } catch (...) {
        if (assets.EditPending()) assets.CancelUpdate();
        throw;
    }
    assets.MoveFirst();
    return counts;
}

}  // namespace tallymar
