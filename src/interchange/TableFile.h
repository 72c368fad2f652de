#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tallymar {

enum class FieldForm {
    Written,  // as FieldText writes the value of any column
    Date,     // a date, in the same form: of a column of dates alone
    None      // nothing that a column takes; the text says what it is
};

struct TableField {
    std::string Text;    // in UTF-8
    bool IsNull = true;  // nothing between the commas, an empty cell; a quoted "" is an empty text
    int Line = 0;        // of the file, from 1, where the field starts; of a sheet its row
    FieldForm Form = FieldForm::Written;
};

// A table that somebody keeps in a file, its first row naming the columns: a CSV, or a workbook's first sheet. What it holds in
// memory is bounded, whatever the size of the file.
class TableFile {
 public:
    virtual ~TableFile() = default;

    // False when no row is left.
    virtual bool ReadRow(std::vector<TableField>& row) = 0;
    // Back to before the first row.
    virtual void Rewind() = 0;

    // The file's name, as it stands before every complaint.
    virtual const std::string& Name() const = 0;
    // What a row is called there: "line", "row".
    virtual std::string_view RowWord() const = 0;
    virtual double ShareRead() const = 0;  // of the file, 0 to 1
};

// By what the file begins with, whatever its name. Failures of CsvReader and of sheets::SheetReader.
std::unique_ptr<TableFile> OpenTable(const std::filesystem::path& path);

// The beginning of a table, for somebody to see what is in it. In Windows-1252; what that does not have is "?".
struct TablePreview {
    std::vector<std::string> Headings;
    std::vector<std::vector<std::string>> Rows;  // each as long as Headings

    static TablePreview Read(const std::filesystem::path& path, std::size_t rows);
};

}  // namespace tallymar
