#pragma once

#include "platform/recordset/Database.h"
#include "platform/recordset/Recordset.h"
#include "support/Failures.h"
#include "support/TempFolder.h"

namespace tallymar::recordset {

using test::NumberOf;
using test::TextOf;

// A small table with every type of field.
inline TableDef ThingsTable() {
    return {
        .Name = "Things",
        .Fields = {{"Name", FieldType::Text, 6, false},
                   {"Note(1)", FieldType::Text, 8, true},
                   {"When", FieldType::Date, 0, false},
                   {"Amount", FieldType::Currency, 0, false},
                   {"Count", FieldType::Integer, 0, false},
                   {"Flag", FieldType::Boolean, 0, false}},
        .Indexes = {
            {"Name", {"Name"}, true, true}, {"Note", {"Note(1)", "When"}, false, false}, {"Amount", {"Amount"}, false, false}}};
}

inline void AddThing(Recordset& things, std::string_view name, int amount = 0) {
    things.AddNew();
    things.Set("Name", name);
    things.Set("Amount", CurrencyAmount::FromInteger(amount));
    things.Update();
}

inline Database CreateThings(const std::filesystem::path& path, int rows = 0) {
    Database database = Database::Create(path);
    database.CreateTable(ThingsTable());
    Recordset things = database.OpenRecordset("Things");
    RunBatch(database, OnFailure::AllOrNothing, [&] {
        for (int i = 1; i <= rows; ++i) AddThing(things, std::to_string(100 + i), i);
    });
    return database;
}

}  // namespace tallymar::recordset
