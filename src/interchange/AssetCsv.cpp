#include "interchange/AssetCsv.h"

#include <algorithm>
#include <bitset>
#include <unordered_map>
#include <utility>

#include "interchange/CsvReader.h"
#include "interchange/FieldText.h"
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
    int Ordinal = 0;
    recordset::Field Field;
    const AssetColumn* Known = nullptr;  // none: another program's column in the company file
};

// The file as rows of values, each complaint with its place.
class AssetFile {
 public:
    AssetFile(const std::filesystem::path& path, const recordset::Recordset& assets) : reader_(path) { ReadHeader(assets); }

    const std::vector<Column>& Columns() const { return columns_; }

    // Calls each(values) for every row, values in the order of Columns.
    template <typename Each>
    void ForEachRow(Each each) {
        reader_.Rewind();
        reader_.ReadRow(row_);
        std::vector<Value> values(columns_.size());
        texts_.resize(columns_.size());
        while (reader_.ReadRow(row_)) {
            CheckWidth();
            for (std::size_t i = 0; i < columns_.size(); ++i) values[i] = Convert(i);
            each(values);
        }
    }

    std::size_t KeyColumn() const { return keyColumn_; }

    [[noreturn]] void Fail(std::size_t column, Failure failure, const std::string& complaint) const {
        throw PlatformError(failure, reader_.Name() + ", line " + std::to_string(row_[column].Line) + ", column " +
                                         columns_[column].Field.Name + ": " + complaint);
    }

    // The number of the current row has stood in the file before.
    [[noreturn]] void FailAsRepeated() {
        const CsvField repeated = row_[keyColumn_];
        const std::string key = KeyOf(repeated);
        reader_.Rewind();
        reader_.ReadRow(row_);
        while (reader_.ReadRow(row_) && !recordset::SameName(KeyOf(row_[keyColumn_]), key)) continue;
        const int earlier = row_[keyColumn_].Line;
        row_[keyColumn_] = repeated;
        Fail(keyColumn_, Failure::DuplicateKey, "asset " + key + " is in line " + std::to_string(earlier) + " already");
    }

 private:
    static std::string KeyOf(const CsvField& field) { return std::string(RTrim(FromUtf8(field.Text))); }

    void ReadHeader(const recordset::Recordset& assets) {
        if (!reader_.ReadRow(row_))
            throw PlatformError(Failure::ItemNotFound, reader_.Name() + ": the file is empty; its first line must name columns");
        if (row_.front().Text.starts_with("SQLite format"))
            throw PlatformError(Failure::InvalidCall, reader_.Name() + " is a company file, no CSV");
        const recordset::TableDef& table = assets.Definition();
        for (const CsvField& cell : row_) {
            const std::string where =
                reader_.Name() + ", line " + std::to_string(cell.Line) + ", column " + std::to_string(columns_.size() + 1) + ": ";
            const recordset::Field* field = table.FindField(FromUtf8(cell.Text));
            if (field == nullptr) {
                throw PlatformError(Failure::ItemNotFound, where + "the table has no column " + QuotedFieldText(cell.Text));
            }
            const int ordinal = assets.Ordinal(field->Name);
            for (const Column& earlier : columns_) {
                if (earlier.Ordinal == ordinal) {
                    throw PlatformError(Failure::DuplicateKey, where + "the header names " + field->Name + " twice");
                }
            }
            if (field->Name == kKey) {
                keyColumn_ = columns_.size();
                hasKey_ = true;
            }
            columns_.push_back({ordinal, *field, FindAssetColumn(field->Name)});
        }
        if (!hasKey_) {
            throw PlatformError(Failure::ItemNotFound, reader_.Name() + ", line " + std::to_string(row_.front().Line) +
                                                           ": the header does not name " + std::string(kKey));
        }
    }

    void CheckWidth() const {
        if (row_.size() == columns_.size()) return;
        const std::string place =
            row_.size() > columns_.size() ? std::to_string(columns_.size() + 1) : columns_[row_.size()].Field.Name;
        throw PlatformError(Failure::TypeMismatch, reader_.Name() + ", line " + std::to_string(row_.back().Line) + ", column " +
                                                       place + ": the row has " + std::to_string(row_.size()) +
                                                       " fields where the header has " + std::to_string(columns_.size()));
    }

    // Texts stay good until the next row.
    Value Convert(std::size_t i) {
        const CsvField& cell = row_[i];
        const Column& column = columns_[i];
        try {
            if (i == keyColumn_) return ConvertKey(cell);
            if (cell.IsNull) return NullFieldValue(column.Field);
            const Value value = ParseFieldText(column.Field, cell.Text, texts_[i]);
            RequireUsable(column, value, cell.Text);
            return value;
        } catch (const PlatformError& failure) {
            Fail(i, failure.Code(), failure.what());
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

    Value ConvertKey(const CsvField& cell) {
        if (cell.IsNull) throw PlatformError(Failure::NullKey, "every asset needs a number");
        const Value key = ParseFieldText(columns_[keyColumn_].Field, cell.Text, texts_[keyColumn_]);
        const std::string_view text = key.Text();
        if (RTrim(text).empty()) throw PlatformError(Failure::NullKey, "every asset needs a number that is not blank");
        if (std::any_of(text.begin(), text.end(), IsControl)) {
            throw PlatformError(Failure::InvalidCall, "a number may not hold a control character");
        }
        return key;
    }

    CsvReader reader_;
    std::vector<Column> columns_;
    std::size_t keyColumn_ = 0;
    bool hasKey_ = false;
    std::vector<CsvField> row_;
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

CsvCounts WriteAll(AssetFile& file, recordset::Recordset& assets) {
    CsvCounts counts;
    WrittenRows written(assets);
    assets.SetIndex(kKey);
    file.ForEachRow([&](const std::vector<Value>& values) {
        assets.Seek(values[file.KeyColumn()]);
        if (assets.NoMatch()) {
            assets.AddNew();
            ++counts.Added;
        } else {
            if (!written.Add(assets.RowNumber())) file.FailAsRepeated();
            assets.Edit();
            ++counts.Rewritten;
        }
        for (std::size_t i = 0; i < values.size(); ++i) assets.Set(file.Columns()[i].Ordinal, values[i]);
        assets.Update();
    });
    assets.MoveFirst();
    return counts;
}

void AppendText(std::string_view text, std::string& line) {
    // An empty text is quoted to tell it from Null, blanks at an end because some programs would drop them.
    const bool plain =
        !text.empty() && text.find_first_of(",\"\r\n") == std::string_view::npos && text.front() != ' ' && text.back() != ' ';
    if (plain) return AppendUtf8(text, line);
    line += '"';
    for (std::size_t quote = text.find('"'); quote != std::string_view::npos; quote = text.find('"')) {
        AppendUtf8(text.substr(0, quote + 1), line);
        line += '"';
        text.remove_prefix(quote + 1);
    }
    AppendUtf8(text, line);
    line += '"';
}

void AppendField(const Value& value, std::string& line) {
    if (value.Type() == Value::Kind::Text) return AppendText(value.Text(), line);
    AppendFieldText(value, line);
}

}  // namespace

CsvCounts LoadAssets(recordset::Database& database, recordset::Recordset& assets, const std::filesystem::path& path) {
    AssetFile file(path, assets);
    file.ForEachRow([](const std::vector<Value>&) {});
    try {
        return recordset::RunBatch(database, recordset::OnFailure::AllOrNothing, [&] { return WriteAll(file, assets); });
    } catch (...) {
        if (assets.EditPending()) assets.CancelUpdate();
        throw;
    }
}

void DumpAssets(recordset::Recordset& assets, const std::vector<std::string>& columns,
                const std::function<void(std::string_view)>& write) {
    const std::vector<recordset::Field>& fields = assets.Definition().Fields;
    std::vector<int> ordinals;
    for (const std::string& column : columns) ordinals.push_back(assets.Ordinal(column));
    if (columns.empty()) {
        for (const recordset::Field& field : fields) ordinals.push_back(assets.Ordinal(field.Name));
    }

    std::string line;
    const auto writeLine = [&](auto append) {
        line.clear();
        for (const int ordinal : ordinals) {
            append(ordinal);
            line += ',';
        }
        line.back() = '\r';
        line += '\n';
        write(line);
    };
    writeLine([&](int ordinal) { AppendText(fields[static_cast<std::size_t>(ordinal)].Name, line); });
    assets.SetIndex(kKey);
    for (assets.MoveFirst(); !assets.Eof(); assets.MoveNext()) {
        writeLine([&](int ordinal) { AppendField(assets.Get(ordinal), line); });
    }
    assets.MoveFirst();
}

}  // namespace tallymar
