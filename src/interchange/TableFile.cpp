#include "interchange/TableFile.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "interchange/CsvReader.h"
#include "interchange/FieldText.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "platform/spreadsheet/SheetReader.h"

namespace tallymar {

namespace {

// As spreadsheet programs show it in full: with the fifteen digits that they compute with.
std::string NumberText(double number) {
    constexpr int kDigits = 15;
    std::array<char, 400> digits;  // the greatest double has 309 of them
    const auto rounded = std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::general, kDigits);
    std::from_chars(digits.data(), rounded.ptr, number);
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed);
    return {digits.data(), written.ptr};
}

class SheetTable : public TableFile {
 public:
    explicit SheetTable(const std::filesystem::path& path) : reader_(path) {}

    bool ReadRow(std::vector<TableField>& row) override {
        if (!reader_.ReadRow(read_)) return false;
        if (width_ == 0) width_ = read_.Cells.size();
        row.resize(std::max(width_, read_.Cells.size()));
        for (std::size_t i = 0; i < row.size(); ++i) {
            row[i] = TableField{.Text = {}, .Line = static_cast<int>(read_.Number)};
            if (i < read_.Cells.size()) Take(read_.Cells[i], row[i]);
        }
        return true;
    }
    void Rewind() override {
        reader_.Rewind();
        width_ = 0;
    }
    const std::string& Name() const override { return reader_.Name(); }
    std::string_view RowWord() const override { return "row"; }
    double ShareRead() const override { return reader_.ShareRead(); }

 private:
    static void Take(const sheets::SheetCell& cell, TableField& field) {
        using sheets::CellKind;
        field.IsNull = cell.Kind == CellKind::Empty;
        switch (cell.Kind) {
            case CellKind::Empty:
                return;
            case CellKind::Text:
                field.Text = cell.Text;
                return;
            case CellKind::Number:
                field.Text = NumberText(cell.Number);
                return;
            case CellKind::Boolean:
                AppendFieldText(recordset::Value(cell.Number != 0), field.Text);
                return;
            case CellKind::Date:
                field.Form = FieldForm::Date;
                AppendFieldText(recordset::Value(Date::FromSerial(cell.Number)), field.Text);
                return;
            case CellKind::Other:
                field.Form = FieldForm::None;
                field.Text = cell.Text;
                return;
        }
    }

    sheets::SheetReader reader_;
    sheets::SheetRow read_;
    std::size_t width_ = 0;  // of the first row, to which the others are filled up
};

}  // namespace

std::unique_ptr<TableFile> OpenTable(const std::filesystem::path& path) {
    if (sheets::SheetReader::Recognizes(path)) return std::make_unique<SheetTable>(path);
    const std::string extension = LCase(path.extension().string());
    if (extension == ".xlsx" || extension == ".ods")
        throw PlatformError(Failure::UnrecognizedFormat, FromUtf8(path.filename().string()) + " is no workbook");
    return std::make_unique<CsvReader>(path);
}

TablePreview TablePreview::Read(const std::filesystem::path& path, std::size_t rows) {
    const auto texts = [](const std::vector<TableField>& row, std::size_t width) {
        std::vector<std::string> all;
        for (const TableField& field : row) all.push_back(FromUtf8(field.Text));
        all.resize(width);
        return all;
    };
    TablePreview preview;
    const std::unique_ptr<TableFile> table = OpenTable(path);
    std::vector<TableField> row;
    if (!table->ReadRow(row))
        throw PlatformError(Failure::ItemNotFound, table->Name() + " is empty; its first row must name columns");
    preview.Headings = texts(row, row.size());
    while (preview.Rows.size() < rows && table->ReadRow(row)) preview.Rows.push_back(texts(row, preview.Headings.size()));
    return preview;
}

}  // namespace tallymar
