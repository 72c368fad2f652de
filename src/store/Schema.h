#pragma once

#include "platform/jet/Database.h"
#include "platform/jet/TableDef.h"

namespace tallymar {

class Prompts;

// The two tables of a company file. Columns, their order, the indexes and their names are a file format.
const jet::TableDef& CompanyTable();
const jet::TableDef& AssetsTable();

// Builds both tables in an empty database.
void CreateSchema(jet::Database& database);

// Adds what files of earlier releases lack. A step that the database refuses is passed over.
void UpgradeSchema(jet::Database& database, Prompts& prompts);

}  // namespace tallymar
