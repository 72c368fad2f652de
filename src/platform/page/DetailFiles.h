#pragma once

#include <string>
#include <string_view>

#include "platform/page/DetailTable.h"

namespace tallymar {

// A text as a cell of a spreadsheet file: with an apostrophe before it when it begins with one of = + - @, by which spreadsheets
// would know a formula, and somebody's description would be run.
std::string AsSpreadsheetText(std::string_view text);

// The table as RFC 4180: the headings, then the rows, CR LF after each. Dates as YYYY-MM-DD, date 0 empty; money plain, with a
// point and at least two decimals, and amounts of a column with a picture of its own without superfluous ones. UTF-8; a byte
// order mark stands in front only where a text goes beyond ASCII, because spreadsheets then need it and other programs do not.
std::string DetailCsv(const DetailTable& table);

// The table as a workbook of one sheet, a whole .xlsx file: headings that stay in view, with filters, and repeat on each printed
// page; text as text, dates as dates, amounts as numbers with two decimals, negative ones in parentheses, or with their
// column's picture. Under the rows stand the totals of the summed columns, which follow the filter; the title and subtitle are
// the head of each printed page. A date before March 1900, which spreadsheets cannot count, is text. Failures: InvalidCall, more
// rows than a sheet holds; DiskFull or DeviceError, no room for the temporary files of a large table.
std::string DetailWorkbook(const DetailTable& table);

}  // namespace tallymar
