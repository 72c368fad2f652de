#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace tallymar {

// The grid of a form page: Letter paper at 10 characters and 6 lines an inch.
inline constexpr int kPageColumns = 85;
inline constexpr int kPageLines = 66;

// A field of a page that can be edited. Its first cell is Column, counted from 0, on Line, counted from 1: that is where the
// values page has its logical column Column + 1 on the file's line Line + 1.
struct FormField {
    bool IsAmount = false;
    int Line = 1;
    int Column = 0;
    int Width = 1;  // cells

    friend bool operator==(const FormField&, const FormField&) = default;
};

// The fields of a page in reading order, from its .FPF file: records of 85 bytes, the first of them a header that is not read. In
// a record byte 3 is "$" for an amount, bytes 50 to 52 are the line, 53 to 55 the column and 56 to 58 the width, as decimal text
// between blanks. The other bytes are not read.
// Failures: those of InputFile; PathAccess, naming the file and the record, for one that is cut short, has more records than a
// page has cells, or has a field that is no number or lies outside the page.
std::vector<FormField> ReadFormFields(const std::filesystem::path& path);
// The same from the contents; `name` is for the failure's text.
std::vector<FormField> ParseFormFields(std::string_view contents, std::string_view name);

// The last field that a click on that cell hits, which may be the cell behind it; -1 when there is none.
int FieldAt(const std::vector<FormField>& fields, int column, int line);

}  // namespace tallymar
