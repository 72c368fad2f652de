#include "interchange/AssetDump.h"

#include <xlsxwriter.h>

#include <array>
#include <charconv>

#include "interchange/CsvText.h"
#include "interchange/FieldText.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "platform/spreadsheet/WorkbookFile.h"

namespace tallymar {

namespace {

using recordset::FieldType;
using recordset::Value;

constexpr std::string_view kKey = "AssetNum";

std::vector<int> Ordinals(const recordset::Recordset& assets, const std::vector<std::string>& columns) {
    std::vector<int> ordinals;
    for (const std::string& column : columns) ordinals.push_back(assets.Ordinal(column));
    if (columns.empty()) {
        for (const recordset::Field& field : assets.Definition().Fields) ordinals.push_back(assets.Ordinal(field.Name));
    }
    return ordinals;
}

template <typename Each>
void ForEachAsset(recordset::Recordset& assets, Each each) {
    assets.SetIndex(kKey);
    for (assets.MoveFirst(); !assets.Eof(); assets.MoveNext()) each();
    assets.MoveFirst();
}

void AppendField(const Value& value, std::string& line) {
    if (value.Type() == Value::Kind::Text) return AppendCsvText(value.Text(), line);
    AppendFieldText(value, line);
}

// Control characters, and what looks like one that has been escaped, as the file format escapes them.
std::string Escaped(std::string_view text) {
    std::string escaped;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto code = static_cast<unsigned char>(text[i]);
        const bool escape = (code < 0x20 && text[i] != '\t' && text[i] != '\n') || code == 0x7F || text.substr(i, 2) == "_x";
        if (!escape) {
            escaped += text[i];
            continue;
        }
        constexpr std::string_view kDigits = "0123456789ABCDEF";
        escaped += {'_', 'x', '0', '0', kDigits[code >> 4], kDigits[code & 15], '_'};
    }
    return escaped;
}

class AssetSheet {
 public:
    AssetSheet(const recordset::Recordset& assets, const std::vector<int>& ordinals) : ordinals_(ordinals) {
        sheet_ = file_.AddSheet("Assets");
        lxw_format* heading = workbook_add_format(file_.Book());
        format_set_bold(heading);
        while (formats_.size() <= kAmount) formats_.push_back(workbook_add_format(file_.Book()));
        // Days stand as they do where the file is opened: by the numbers that every spreadsheet program has for that.
        format_set_num_format(formats_[kText], "@");
        format_set_num_format_index(formats_[kDay], 14);
        format_set_num_format_index(formats_[kMoment], 22);
        format_set_num_format(formats_[kAmount], "#,##0.00##");
        worksheet_freeze_panes(sheet_, 1, 1);
        for (std::size_t i = 0; i < ordinals_.size(); ++i) {
            const recordset::Field& field = assets.Definition().Fields[static_cast<std::size_t>(ordinals_[i])];
            constexpr double kWidth = 14;
            lxw_format* format = field.Type == FieldType::Text ? formats_[kText] : nullptr;
            sheets::WorkbookFile::Check(worksheet_set_column(sheet_, Col(i), Col(i), kWidth, format));
            sheets::WorkbookFile::Check(worksheet_write_string(sheet_, 0, Col(i), ToUtf8(field.Name).c_str(), heading));
        }
    }

    void Add(const recordset::Recordset& assets) {
        for (std::size_t i = 0; i < ordinals_.size(); ++i) Put(Col(i), assets.Get(ordinals_[i]));
        ++row_;
    }

    void Finish(const std::function<void(std::string_view)>& write) { file_.Finish(write); }

 private:
    enum Format : std::size_t { kText, kDay, kMoment, kAmount };

    static lxw_col_t Col(std::size_t column) { return static_cast<lxw_col_t>(column); }

    void Put(lxw_col_t column, const Value& value) {
        switch (value.Type()) {
            case Value::Kind::Null:
                return;
            case Value::Kind::Text:
                return PutText(column, value.Text());
            case Value::Kind::Integer:
                return PutNumber(column, value.Integer(), nullptr);
            case Value::Kind::Boolean:
                return sheets::WorkbookFile::Check(
                    worksheet_write_boolean(sheet_, row_, column, value.Boolean() ? 1 : 0, nullptr));
            case Value::Kind::Date:
                return PutDate(column, value);
            case Value::Kind::Currency: {
                // Spreadsheet programs compute with fifteen digits.
                constexpr std::int64_t kExact = 999'999'999'999'999;
                const std::int64_t count = value.Currency().TenThousandths();
                if (count < -kExact || count > kExact) return PutWritten(column, value);
                return PutNumber(column, value.Currency().ToDouble(), formats_[kAmount]);
            }
        }
    }

    void PutDate(lxw_col_t column, const Value& value) {
        constexpr double kFirst = 61;      // 1900-03-01; spreadsheets believe in a February 29 before it
        constexpr double kLast = 2958466;  // the year 10000
        const double days = value.AsDate().Serial();
        std::array<char, 32> digits;
        // The file has sixteen of them.
        const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), days, std::chars_format::general, 16);
        double kept = 0;
        std::from_chars(digits.data(), written.ptr, kept);
        if (days < kFirst || days >= kLast || kept != days) return PutWritten(column, value);
        PutNumber(column, days, formats_[days == static_cast<double>(static_cast<std::int64_t>(days)) ? kDay : kMoment]);
    }

    void PutNumber(lxw_col_t column, double number, lxw_format* format) {
        sheets::WorkbookFile::Check(worksheet_write_number(sheet_, row_, column, number, format));
    }

    void PutText(lxw_col_t column, std::string_view text) {
        if (text.empty()) {
            return sheets::WorkbookFile::Check(worksheet_write_formula_str(sheet_, row_, column, "=\"\"", formats_[kText], ""));
        }
        sheets::WorkbookFile::Check(worksheet_write_string(sheet_, row_, column, ToUtf8(Escaped(text)).c_str(), formats_[kText]));
    }

    void PutWritten(lxw_col_t column, const Value& value) {
        std::string text;
        AppendFieldText(value, text);
        sheets::WorkbookFile::Check(worksheet_write_string(sheet_, row_, column, text.c_str(), formats_[kText]));
    }

    const std::vector<int>& ordinals_;
    sheets::WorkbookFile file_;
    lxw_worksheet* sheet_ = nullptr;
    std::vector<lxw_format*> formats_;  // by Format
    lxw_row_t row_ = 1;
};

}  // namespace

void DumpAssets(recordset::Recordset& assets, const std::vector<std::string>& columns,
                const std::function<void(std::string_view)>& write) {
    const std::vector<int> ordinals = Ordinals(assets, columns);
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
    writeLine([&](int ordinal) { AppendCsvText(assets.Definition().Fields[static_cast<std::size_t>(ordinal)].Name, line); });
    ForEachAsset(assets, [&] { writeLine([&](int ordinal) { AppendField(assets.Get(ordinal), line); }); });
}

void DumpWorkbook(recordset::Recordset& assets, const std::vector<std::string>& columns,
                  const std::function<void(std::string_view)>& write) {
    const std::vector<int> ordinals = Ordinals(assets, columns);
    if (assets.RecordCount() >= LXW_ROW_MAX) {
        throw PlatformError(Failure::InvalidCall,
                            "There are more assets than a sheet has rows (1,048,575). Choose a .csv file instead.");
    }
    AssetSheet sheet(assets, ordinals);
    ForEachAsset(assets, [&] { sheet.Add(assets); });
    sheet.Finish(write);
}

}  // namespace tallymar
