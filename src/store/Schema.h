#pragma once

#include "platform/recordset/Database.h"
#include "platform/recordset/TableDef.h"

namespace tallymar {

class Prompts;

// The two tables of a company file. Columns, their order, the indexes and their names are a file format.
const recordset::TableDef& CompanyTable();
const recordset::TableDef& AssetsTable();

// Builds both tables in an empty database.
void CreateSchema(recordset::Database& database);

// Adds what files of earlier releases lack. A step that the database refuses is passed over.
void UpgradeSchema(recordset::Database& database, Prompts& prompts);

}  // namespace tallymar
