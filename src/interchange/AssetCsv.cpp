#include "interchange/AssetCsv.h"

#include <cerrno>
#include <fstream>
#include <ostream>
#include <unordered_map>
#include <utility>

#include "interchange/CsvReader.h"
#include "interchange/FieldText.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

using recordset::Value;

constexpr std::string_view kKey = "AssetNum";

std::string ReadWhole(const std::filesystem::path& path) {
    const std::string name = FromUtf8(path.string());
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found)
        throw PlatformError(Failure::FileNotFound, "File not found: " + name);
    if (status.type() == std::filesystem::file_type::directory) throw PlatformError(Failure::PathAccess, name + " is a folder");
    errno = 0;
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        const Failure failure = errno == EACCES ? Failure::PermissionDenied : Failure::PathAccess;
        throw PlatformError(failure, std::string(FailureText(failure)) + ": " + name);
    }
    std::string contents;
    if (status.type() == std::filesystem::file_type::regular) contents.reserve(std::filesystem::file_size(path, error));
    std::vector<char> chunk(1 << 16);
    while (in.read(chunk.data(), static_cast<std::streamsize>(chunk.size())) || in.gcount() > 0) {
        contents.append(chunk.data(), static_cast<std::size_t>(in.gcount()));
    }
    if (in.bad()) throw PlatformError(Failure::DeviceError, "The file cannot be read: " + name);
    return contents;
}

// One column of the file: where its values go in the table.
struct Column {
    int Ordinal = 0;
    recordset::Field Field;
};

// The file as rows of values, each complaint with its place.
class AssetFile {
 public:
    AssetFile(const std::filesystem::path& path, const recordset::Recordset& assets)
        : name_(FromUtf8(path.filename().string())), contents_(ReadWhole(path)) {
        ReadHeader(assets);
    }

    const std::vector<Column>& Columns() const { return columns_; }

    // Calls each(values) for every row, values in the order of Columns.
    template <typename Each>
    void ForEachRow(Each each) {
        CsvReader reader(contents_, name_);
        reader.ReadRow(row_);
        std::vector<Value> values(columns_.size());
        texts_.resize(columns_.size());
        while (reader.ReadRow(row_)) {
            CheckWidth();
            for (std::size_t i = 0; i < columns_.size(); ++i) values[i] = Convert(i);
            each(values);
        }
    }

    std::size_t KeyColumn() const { return keyColumn_; }
    int RowLine() const { return row_[keyColumn_].Line; }

    [[noreturn]] void Fail(std::size_t column, Failure failure, const std::string& complaint) const {
        throw PlatformError(failure, name_ + ", line " + std::to_string(row_[column].Line) + ", column " +
                                         columns_[column].Field.Name + ": " + complaint);
    }

 private:
    void ReadHeader(const recordset::Recordset& assets) {
        CsvReader reader(contents_, name_);
        if (!reader.ReadRow(row_))
            throw PlatformError(Failure::ItemNotFound, name_ + ": the file is empty; its first line must name columns");
        const recordset::TableDef& table = assets.Definition();
        for (const CsvField& cell : row_) {
            const std::string where =
                name_ + ", line " + std::to_string(cell.Line) + ", column " + std::to_string(columns_.size() + 1) + ": ";
            const recordset::Field* field = table.FindField(cell.Text);
            if (field == nullptr) {
                throw PlatformError(Failure::ItemNotFound, where + "the table has no column \"" + FromUtf8(cell.Text) + "\"");
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
            columns_.push_back({ordinal, *field});
        }
        if (!hasKey_) {
            throw PlatformError(Failure::ItemNotFound, name_ + ", line " + std::to_string(row_.front().Line) +
                                                           ": the header does not name " + std::string(kKey));
        }
    }

    void CheckWidth() const {
        if (row_.size() == columns_.size()) return;
        const std::string place =
            row_.size() > columns_.size() ? std::to_string(columns_.size() + 1) : columns_[row_.size()].Field.Name;
        throw PlatformError(Failure::TypeMismatch, name_ + ", line " + std::to_string(row_.back().Line) + ", column " + place +
                                                       ": the row has " + std::to_string(row_.size()) +
                                                       " fields where the header has " + std::to_string(columns_.size()));
    }

    // Texts stay good until the next row.
    Value Convert(std::size_t i) {
        const CsvField& cell = row_[i];
        const recordset::Field& field = columns_[i].Field;
        try {
            if (!cell.IsNull) return ParseFieldText(field, cell.Text, texts_[i]);
            if (i == keyColumn_) throw PlatformError(Failure::NullKey, "every asset needs a number");
            return NullFieldValue(field);
        } catch (const PlatformError& failure) {
            Fail(i, failure.Code(), failure.what());
        }
    }

    std::string name_;
    std::string contents_;
    std::vector<Column> columns_;
    std::size_t keyColumn_ = 0;
    bool hasKey_ = false;
    std::vector<CsvField> row_;
    std::vector<std::string> texts_;  // Windows-1252, by column
};

void CheckWholeFile(AssetFile& file) {
    std::unordered_map<std::string, int> lineOfKey;
    file.ForEachRow([&](const std::vector<Value>& values) {
        const std::string_view key = values[file.KeyColumn()].Text();
        const auto [earlier, isNew] = lineOfKey.emplace(UCase(RTrim(key)), file.RowLine());
        if (!isNew) {
            file.Fail(file.KeyColumn(), Failure::DuplicateKey,
                      "asset " + std::string(RTrim(key)) + " is in line " + std::to_string(earlier->second) + " already");
        }
    });
}

CsvCounts WriteAll(AssetFile& file, recordset::Recordset& assets) {
    CsvCounts counts;
    assets.SetIndex(kKey);
    file.ForEachRow([&](const std::vector<Value>& values) {
        assets.Seek(values[file.KeyColumn()]);
        if (assets.NoMatch()) {
            assets.AddNew();
            ++counts.Added;
        } else {
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
    CheckWholeFile(file);
    try {
        return recordset::RunBatch(database, recordset::OnFailure::AllOrNothing, [&] { return WriteAll(file, assets); });
    } catch (...) {
        if (assets.EditPending()) assets.CancelUpdate();
        throw;
    }
}

void DumpAssets(recordset::Recordset& assets, const std::vector<std::string>& columns, std::ostream& out) {
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
        out.write(line.data(), static_cast<std::streamsize>(line.size()));
    };
    writeLine([&](int ordinal) { AppendText(fields[static_cast<std::size_t>(ordinal)].Name, line); });
    assets.SetIndex(kKey);
    for (assets.MoveFirst(); !assets.Eof() && out; assets.MoveNext()) {
        writeLine([&](int ordinal) { AppendField(assets.Get(ordinal), line); });
    }
    assets.MoveFirst();
}

}  // namespace tallymar
