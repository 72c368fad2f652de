#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
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

// Adds a row of the table for each row of the file or, where its AssetNum (letter case and trailing blanks apart) is there,
// rewrites that row. Columns that the header does not name stay as they are, and are Null in new rows (Booleans False). Leaves
// the recordset on the first row by AssetNum.
//
// All or nothing: the whole file is looked at before anything is written, and a failure of the database takes back what was.
// Failures name the file, the line and the column: ItemNotFound (a column that the table does not have, or no AssetNum),
// DuplicateKey (a column or an AssetNum named twice), TypeMismatch (no such number, date or True/False; a row longer or shorter
// than the header; a character that Windows-1252 does not have), Overflow, FieldTooSmall, ZeroLengthNotAllowed, NullKey,
// InvalidUseOfNull (an empty Boolean), InvalidCall (no CSV); those of opening a file; those of Database.
CsvCounts LoadAssets(recordset::Database& database, recordset::Recordset& assets, const std::filesystem::path& path);

// Every row by AssetNum; columns in the order given, all in the table's order when there are none. ItemNotFound for an unknown
// one, before anything is written. Leaves the recordset on the first row by AssetNum. Whether the stream took it all is for the
// caller to ask.
void DumpAssets(recordset::Recordset& assets, const std::vector<std::string>& columns, std::ostream& out);

}  // namespace tallymar
