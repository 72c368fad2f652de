#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/recordset/Recordset.h"

// Every asset as a table, a row by AssetNum for each, the first naming columns: in the order given, all in the table's order when
// there are none. What is written LoadAssets reads back to the same values. Each leaves the recordset on the first row by
// AssetNum. ItemNotFound for an unknown column, before anything is written.
namespace tallymar {

// As a text that spreadsheets and version control understand: RFC 4180 in UTF-8. Values stand as FieldText writes them; a field
// with nothing in it is Null, a quoted "" an empty text. `write` takes line after line; its failures reach the caller.
void DumpAssets(recordset::Recordset& assets, const std::vector<std::string>& columns,
                const std::function<void(std::string_view)>& write);

// As an .xlsx: dates as dates, amounts as numbers, texts as they stand. A value that a spreadsheet would not keep (a date before
// March 1900, an amount of more than fifteen digits) is a text in the form that DumpAssets gives it, an empty text a formula that
// gives one. `write` takes the file in pieces. InvalidCall when there are more assets than a sheet has rows; DiskFull,
// DeviceError.
void DumpWorkbook(recordset::Recordset& assets, const std::vector<std::string>& columns,
                  const std::function<void(std::string_view)>& write);

}  // namespace tallymar
