#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/spreadsheet/Parts.h"

// Workbooks as spreadsheet programs write them (.xlsx and .ods): read, sheet by sheet and row by row.
namespace tallymar::sheets {

enum class CellKind : std::uint8_t { Empty, Text, Number, Date, Boolean, Other };

struct SheetCell {
    CellKind Kind = CellKind::Empty;
    double Number = 0;  // Number, what a percentage shows (50 for 50 %); Date: days from 1899-12-30; Boolean: 0 or 1
    std::string Text;   // Text: in UTF-8; Other: what it is ("the error #REF!")
};

struct SheetRow {
    std::int64_t Number = 0;       // as the sheet counts, from 1
    std::vector<SheetCell> Cells;  // from column A to the last that is not empty
};

// The rows of a workbook's first sheet, one after the other; rows with nothing in them are passed over. Cells hold what the
// program that wrote them last computed.
//
// The file may be somebody's attack: whatever it holds, memory stays bounded, by one piece of the file and the texts that an
// .xlsx keeps apart from its cells (kMostTexts).
// Failures, each text beginning with the file's name: UnrecognizedFormat (no workbook, damaged, protected by a password),
// FieldTooSmall (a text, a row or a sheet larger than belongs in a company), those of InputFile.
class SheetReader {
 public:
    static constexpr std::size_t kLongestText = 4096;  // bytes of a cell
    static constexpr std::size_t kMostColumns = 1024;
    static constexpr std::int64_t kMostRows = 1'048'576;
    static constexpr std::size_t kMostTexts = std::size_t{64} << 20;  // bytes of all texts

    explicit SheetReader(const std::filesystem::path& path);
    SheetReader(std::unique_ptr<Parts> parts, std::string name);
    ~SheetReader();

    // False when no row is left.
    bool ReadRow(SheetRow& row);
    // Back to before the first row.
    void Rewind();

    double ShareRead() const;                          // of the sheet, 0 to 1
    const std::string& Name() const { return name_; }  // the file's, in Windows-1252
    const std::string& SheetName() const;              // in UTF-8

    // Whether the file begins as a workbook does, readable or not: an older format of spreadsheet programs too.
    static bool Recognizes(const std::filesystem::path& path);

 private:
    struct State;

    template <typename Body>
    auto Named(Body body) const;

    std::string name_;
    std::unique_ptr<State> state_;
};

}  // namespace tallymar::sheets
