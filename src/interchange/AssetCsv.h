#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/recordset/Database.h"
#include "platform/recordset/Recordset.h"

// Assets as a text that spreadsheets and version control understand: RFC 4180 in UTF-8, the header naming columns of the table.
// Values stand as FieldText writes them. A field with nothing in it is Null, a quoted "" an empty text. What DumpAssets writes,
// LoadAssets reads back to the same values.
namespace tallymar {

struct CsvCounts {
    int Added = 0;
    int Rewritten = 0;
};

// Adds a row of the table for each row of the file or, where its AssetNum (as the table's index compares) is there, rewrites that
// row. Columns that the header does not name stay as they are, and are Null in new rows (Booleans False). Leaves the recordset on
// the first row by AssetNum. Memory does not grow with the file, which is read twice.
//
// All or nothing: every value of the file is looked at before anything is written, and a failure after that takes back what was.
// Failures name the file, the line and the column: ItemNotFound (a column that the table does not have, or no AssetNum),
// DuplicateKey (a column or an AssetNum named twice), TypeMismatch (no such number, date or True/False; a row longer or shorter
// than the header; a character that Windows-1252 does not have), Overflow (what no command could read again too: a class life
// beyond 16 bits, a date outside the years 100 to 9999), FieldTooSmall, ZeroLengthNotAllowed, NullKey (blank too),
// InvalidUseOfNull (an empty Boolean), InvalidCall (no CSV; a control character in a number); those of InputFile and of Database.
CsvCounts LoadAssets(recordset::Database& database, recordset::Recordset& assets, const std::filesystem::path& path);

// Every row by AssetNum; columns in the order given, all in the table's order when there are none. ItemNotFound for an unknown
// one, before anything is written. Leaves the recordset on the first row by AssetNum. `write` takes line after line; its failures
// reach the caller.
void DumpAssets(recordset::Recordset& assets, const std::vector<std::string>& columns,
                const std::function<void(std::string_view)>& write);

}  // namespace tallymar
