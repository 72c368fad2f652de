#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

#include "platform/spreadsheet/SheetReader.h"
#include "platform/spreadsheet/XmlParser.h"

namespace tallymar::sheets {

// Rows on their way from the parser, which pushes them, to the reader, which is asked for them.
class RowQueue {
 public:
    SheetRow& Building() { return building_; }
    void BeginRow(std::int64_t number);
    // Puts a cell at a column, from 0, and at the ones that follow it.
    void Put(std::size_t column, const SheetCell& cell, std::uint64_t times = 1);
    // What has been built, so many times in rows that follow each other.
    void EndRow(std::uint64_t times = 1);

    bool Pop(SheetRow& row);

 private:
    struct Waiting {
        SheetRow Row;
        std::uint64_t Times = 0;
    };

    SheetRow building_;
    std::deque<Waiting> waiting_;
};

// The part of a workbook that has its first sheet, as rows.
class SheetParser : public XmlHandler {
 public:
    RowQueue& Rows() { return rows_; }
    bool IsDone() const { return done_; }  // the sheet has ended; what follows in the part is no longer looked at

 protected:
    RowQueue rows_;
    bool done_ = false;
};

// Each complaint the second half of a sentence that begins with the file's name.
[[noreturn]] void RefuseWorkbook(const std::string& complaint);
[[noreturn]] void RefuseTooLarge(const std::string& complaint);

// What a cell is whose formula stands there without a value, as a program leaves it that only writes workbooks.
inline constexpr std::string_view kNotComputed = "a formula that has not been computed";

// Appends what a cell may have, and one byte more when there is more.
void AppendBounded(std::string_view text, std::string& to);

// The whole of the text; false when it is no number.
bool ParseNumber(std::string_view text, double& number);

}  // namespace tallymar::sheets
