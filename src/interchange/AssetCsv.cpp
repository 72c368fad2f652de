#include "interchange/AssetCsv.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <fstream>
#include <optional>
#include <ostream>
#include <unordered_map>
#include <utility>

#include "interchange/CsvReader.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

using jet::FieldType;
using jet::Value;

constexpr std::string_view kKey = "AssetNum";
constexpr char kSerialMark = '@';

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

// A moment by its days alone, for those that have no calendar form of their own.
std::optional<Date> ParseSerial(std::string_view text) {
    if (!text.starts_with(kSerialMark)) return std::nullopt;
    text.remove_prefix(1);
    double days = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), days);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(days)) return std::nullopt;
    return Date::FromSerial(days);
}

std::string DateField(Date date) {
    std::string text;
    try {
        text = FormatIsoDate(date);
    } catch (const PlatformError&) {
        // Outside the calendar.
    }
    if (!text.empty() && ParseIsoDate(text) == date) return text;
    char digits[32];
    const auto written = std::to_chars(digits, digits + sizeof digits, date.Serial());
    return kSerialMark + std::string(digits, written.ptr);
}

bool HasMoreThanFourDecimals(std::string_view number) {
    const std::size_t point = number.find('.');
    return point != std::string_view::npos && number.size() - point - 1 > 4;
}

// One column of the file: where its values go in the table.
struct Column {
    int Ordinal = 0;
    jet::Field Field;
};

// The file as rows of values, each complaint with its place.
class AssetFile {
 public:
    AssetFile(const std::filesystem::path& path, const jet::Recordset& assets)
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
    void ReadHeader(const jet::Recordset& assets) {
        CsvReader reader(contents_, name_);
        if (!reader.ReadRow(row_))
            throw PlatformError(Failure::ItemNotFound, name_ + ": the file is empty; its first line must name columns");
        const jet::TableDef& table = assets.Definition();
        for (const CsvField& cell : row_) {
            const std::string where =
                name_ + ", line " + std::to_string(cell.Line) + ", column " + std::to_string(columns_.size() + 1) + ": ";
            const jet::Field* field = table.FindField(cell.Text);
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
        const jet::Field& field = columns_[i].Field;
        if (cell.IsNull) {
            if (i == keyColumn_) Fail(i, Failure::NullKey, "every asset needs a number");
            if (field.Type == FieldType::Boolean)
                Fail(i, Failure::InvalidUseOfNull, "True or False is wanted, and the field is empty");
            return Value();
        }
        switch (field.Type) {
            case FieldType::Text:
                return ConvertText(i);
            case FieldType::Date: {
                std::optional<Date> date = ParseIsoDate(cell.Text);
                if (!date) date = ParseSerial(cell.Text);
                if (!date) Fail(i, Failure::TypeMismatch, Quoted(cell) + " is no date of the form YYYY-MM-DD");
                return Value(*date);
            }
            case FieldType::Currency: {
                const std::optional<CurrencyAmount> amount = CurrencyAmount::Parse(cell.Text);
                if (!amount || HasMoreThanFourDecimals(cell.Text)) {
                    Fail(i, Failure::TypeMismatch, Quoted(cell) + " is no amount (digits, a point, at most four decimals)");
                }
                return Value(*amount);
            }
            case FieldType::Integer:
                return ConvertInteger(i);
            case FieldType::Boolean:
                if (UCase(cell.Text) == "TRUE") return Value(true);
                if (UCase(cell.Text) == "FALSE") return Value(false);
                Fail(i, Failure::TypeMismatch, Quoted(cell) + " is neither True nor False");
        }
        Fail(i, Failure::TypeMismatch, "the column has an unknown type");
    }

    Value ConvertText(std::size_t i) {
        const CsvField& cell = row_[i];
        const jet::Field& field = columns_[i].Field;
        bool lossy = false;
        texts_[i] = FromUtf8(cell.Text, &lossy);
        if (lossy) Fail(i, Failure::TypeMismatch, Quoted(cell) + " has a character that Windows-1252 does not have (shown as ?)");
        if (texts_[i].empty() && !field.AllowZeroLength) Fail(i, Failure::ZeroLengthNotAllowed, "the text may not be empty");
        if (texts_[i].size() > static_cast<std::size_t>(field.Size)) {
            Fail(i, Failure::FieldTooSmall,
                 Quoted(cell) + " has " + std::to_string(texts_[i].size()) + " characters; the column holds " +
                     std::to_string(field.Size));
        }
        return Value(texts_[i]);
    }

    Value ConvertInteger(std::size_t i) const {
        const std::string& text = row_[i].Text;
        std::int16_t number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error == std::errc::result_out_of_range)
            Fail(i, Failure::Overflow, Quoted(row_[i]) + " is not within -32768 to 32767");
        if (error != std::errc() || end != text.data() + text.size())
            Fail(i, Failure::TypeMismatch, Quoted(row_[i]) + " is no whole number");
        return Value(number);
    }

    static std::string Quoted(const CsvField& cell) { return "\"" + FromUtf8(cell.Text) + "\""; }

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

CsvCounts WriteAll(AssetFile& file, jet::Recordset& assets) {
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
    switch (value.Type()) {
        case Value::Kind::Null:
            break;
        case Value::Kind::Text:
            AppendText(value.Text(), line);
            break;
        case Value::Kind::Date:
            line += DateField(value.AsDate());
            break;
        case Value::Kind::Currency:
            line += value.Currency().ToText();
            break;
        case Value::Kind::Integer:
            line += std::to_string(value.Integer());
            break;
        case Value::Kind::Boolean:
            line += value.Boolean() ? "True" : "False";
            break;
    }
}

}  // namespace

CsvCounts LoadAssets(jet::Database& database, jet::Recordset& assets, const std::filesystem::path& path) {
    AssetFile file(path, assets);
    CheckWholeFile(file);
    jet::WriteBatch batch(database);
    try {
        const CsvCounts counts = WriteAll(file, assets);
        batch.Commit();
        return counts;
    } catch (...) {
        if (assets.EditPending()) assets.CancelUpdate();
        batch.Rollback();
        throw;
    }
}

void DumpAssets(jet::Recordset& assets, const std::vector<std::string>& columns, std::ostream& out) {
    const std::vector<jet::Field>& fields = assets.Definition().Fields;
    std::vector<int> ordinals;
    for (const std::string& column : columns) ordinals.push_back(assets.Ordinal(column));
    if (columns.empty()) {
        for (const jet::Field& field : fields) ordinals.push_back(assets.Ordinal(field.Name));
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
