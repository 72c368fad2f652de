#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/spreadsheet/NumberFormat.h"
#include "platform/spreadsheet/SheetParser.h"

namespace tallymar::sheets {

// The texts of an .xlsx, which its cells name by number; one after the other in one piece of memory.
class SharedTexts {
 public:
    void Add(std::string_view text);  // fails when all are more than SheetReader::kMostTexts
    std::size_t Count() const { return ends_.size(); }
    std::string_view operator[](std::size_t index) const;

 private:
    std::string all_;
    std::vector<std::uint32_t> ends_;
};

// What an .xlsx says of its sheets outside of them, as far as cells need it.
struct XlsxBook {
    std::string SheetName;               // of the first sheet, in UTF-8
    std::string SheetPart;               // the part that it is in
    bool CountsFrom1904 = false;         // its days
    std::vector<NumberMeaning> Formats;  // by a cell's style
    SharedTexts Texts;

    // Failures of Parts; UnrecognizedFormat when there is no sheet.
    static XlsxBook Read(Parts& parts);
};

// The sheet's rows; the book must outlive the parser.
std::unique_ptr<SheetParser> ParseXlsxSheet(const XlsxBook& book);

}  // namespace tallymar::sheets
