#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/recordset/TableDef.h"

// The SQL of this layer, as texts: how a definition stands in a file, and the one-step queries that a recordset moves by.
//
// A file can be read and written by any SQLite tool: there is no collation or function of our own in it. A text key is therefore
// indexed as rtrim("Column") COLLATE NOCASE. What SQLite has no place for is part of the declared type ("INTEGER CURRENCY",
// "TEXT NONEMPTY(6)"; the storage class comes first) or a comment in the index's definition, both of which it keeps word for
// word.
namespace tallymar::recordset::sql {

std::string Quote(std::string_view name);

std::string DeclaredType(const Field& field);
Field FieldFromDeclaredType(std::string name, std::string_view declared);

std::string CreateTable(const TableDef& table);
std::string AddField(std::string_view table, const Field& field);
std::string CreateIndex(const TableDef& table, const Index& index);

// Index names are one space for the whole database, so the table's name is put in front.
std::string StoredIndexName(std::string_view table, std::string_view index);
// nullopt for an index that recordsets cannot walk: another collation, a descending or partial one.
std::optional<Index> IndexFromSql(const TableDef& table, std::string_view sql);

// One kind of query for the next rows in the order of an index (or in row order, without one).
struct StepShape {
    int Depth = 0;        // how many leading keys are equal to the given ones
    bool Beyond = false;  // then the next key (after the last key: the row) lies beyond the given one, in the direction
    bool Descending = false;
    std::uint32_t NullMask = 0;  // which of the given keys are Null; those are not bound

    friend bool operator==(const StepShape&, const StepShape&) = default;
};

// Parameters: the given keys that are not Null, the row if it is the one to be beyond, the greatest number of rows. Columns: the
// row, then every field.
std::string Step(const TableDef& table, const Index* index, const StepShape& shape);

// How many rows there are of the kind, whatever their number. Parameters as Step, without the last.
std::string Count(const TableDef& table, const Index* index, const StepShape& shape);

std::string SelectByRow(const TableDef& table);  // ?1 the row; columns as Step
std::string Insert(const TableDef& table);       // the fields, then the greatest row number given out before
std::string DeleteByRow(const TableDef& table);
std::string UpdateByRow(const TableDef& table, const std::vector<int>& ordinals);  // the fields, then the row

}  // namespace tallymar::recordset::sql
