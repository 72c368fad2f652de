#pragma once

#include <string>

#include "platform/recordset/Connection.h"
#include "platform/recordset/TableDef.h"

// Refuses a table that would do something by itself when its rows are read or written, or that does not number its rows.
// Triggers, views and foreign keys need no refusal: the connection never runs them. Failure::UnrecognizedFormat names the table
// and what it holds.
namespace tallymar::recordset {

// By the definition of the table: generated columns, CHECK constraints, ON CONFLICT clauses, unknown collations, a virtual table
// or one made WITHOUT ROWID or STRICT, and a column that is, or is named like, the row's number.
void RequirePlainTable(Connection& connection, const std::string& tableUtf8);

// Indexes other than those of the definition: ones of an expression, of a part of the rows, or of an unknown collation.
void RequirePlainIndexes(Connection& connection, const TableDef& table);

}  // namespace tallymar::recordset
