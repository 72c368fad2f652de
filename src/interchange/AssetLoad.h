#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "interchange/AssetImport.h"

// Assets from a table in a file: a CSV (RFC 4180 in UTF-8) or the first sheet of a workbook (.xlsx, .ods).
namespace tallymar {

// What a heading stands for, where its user says so. Both in Windows-1252.
struct HeadingPair {
    std::string Heading;
    std::string Column;  // of Assets; empty: what stands below the heading is not taken

    friend bool operator==(const HeadingPair&, const HeadingPair&) = default;
};

struct LoadOptions {
    std::vector<HeadingPair> Pairs;  // of the headings that do not name a column, or not the one that is meant
    bool AddNew = false;             // a number that is taken is added under a "DUP" number; else its row is rewritten
    bool CheckOnly = false;          // everything is read and tried, what fails is said in Remarks, and nothing is written
};

// Adds a row of the table for each row of the file or, where its AssetNum (as the table's index compares) is there, rewrites that
// row. Headings name columns as Headings knows them. Columns that none names stay as they are, and are Null in new rows (Booleans
// False). Leaves the recordset on the first row by AssetNum. Memory does not grow with the file, which is read twice.
//
// Values stand as FieldText has them; a field with nothing in it is Null, an empty text too in a column that holds no texts, and
// a row with nothing in any field is passed over. A column that the asset form shows as a list takes the list's entries too
// ("MACS", "New"). In a workbook dates are dates, numbers have the fifteen digits that spreadsheet programs compute with, and a
// percentage is the number that is shown.
//
// All or nothing: every value of the file is looked at before anything is written, and a failure after that takes back what was.
// Failures name the file, the line or row, and the column: ItemNotFound (a heading that names no column, or none names AssetNum),
// DuplicateKey (a column or an AssetNum named twice), TypeMismatch (no such number, date or True/False; a row longer or shorter
// than the header; a character that Windows-1252 does not have), Overflow (what no command could read again too: a class life
// beyond 16 bits, a date outside the years 100 to 9999), FieldTooSmall, ZeroLengthNotAllowed, NullKey (blank too),
// InvalidUseOfNull (an empty Boolean), InvalidCall (no CSV; a control character in a number); those of OpenTable and of Database.
ImportCounts LoadAssets(recordset::Database& database, recordset::Recordset& assets, const std::filesystem::path& path,
                        const LoadOptions& options = {}, const ImportProgress& progress = {});

}  // namespace tallymar
