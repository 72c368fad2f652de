#include <gtest/gtest.h>

#include "Things.h"
#include "support/OtherProgram.h"

// A file that somebody has prepared: it runs nothing, and what would change rows by itself is refused by name.
namespace tallymar::recordset {
namespace {

class HostileFileTest : public testing::Test {
 protected:
    test::TempFolder folder_;
    std::filesystem::path path_ = folder_ / "things.mdb";
};

TEST_F(HostileFileTest, TriggersViewsAndForeignKeysNeverRun) {
    { CreateThings(path_, 3); }
    test::OtherProgram(path_).Run(R"sql(
        CREATE TRIGGER t1 AFTER UPDATE ON Things BEGIN DELETE FROM Things; END;
        CREATE TRIGGER t2 AFTER INSERT ON Things BEGIN DELETE FROM Things; END;
        CREATE TRIGGER t3 AFTER DELETE ON Things BEGIN DELETE FROM Things; END;
        CREATE VIEW v AS SELECT * FROM Things;
        CREATE TABLE Children (Parent TEXT REFERENCES Things (Name) ON DELETE CASCADE);
        CREATE INDEX Plain ON Things (Flag))sql");
    Database database = Database::Open(path_);
    database.CreateField("Things", {"Sold", FieldType::Boolean});  // writes every row
    Recordset things = database.OpenRecordset("Things");
    AddThing(things, "NEW");
    things.Delete();
    EXPECT_EQ(things.RecordCount(), 3);
    EXPECT_EQ(database.TableNames(), (std::vector<std::string>{"Things", "Children"}));
}

TEST_F(HostileFileTest, WhatRunsInsideATableIsRefusedByName) {
    const std::pair<const char*, const char*> kCases[] = {
        {"(Name TEXT, Amount INTEGER CHECK (Amount > 0))", "a CHECK constraint at Amount"},
        {"(Name TEXT, Amount INTEGER, CONSTRAINT Positive /* ) */ CHECK (Amount > 0))", "a CHECK constraint at Positive"},
        {"(Name TEXT, Amount INTEGER, \xEF\xBB\xBF"
         "CHECK (Amount > 0))",
         "a CHECK constraint"},
        {"(Name TEXT, \"Half(1)\" INTEGER GENERATED ALWAYS AS (Amount / 2) VIRTUAL, Amount)", "generated column Half(1)"},
        {"(Name TEXT UNIQUE ON CONFLICT REPLACE)", "ON CONFLICT clause at Name"},
        {"(Name TEXT COLLATE elsewhere)", "by the rule elsewhere"},
        {"(Name TEXT PRIMARY KEY) WITHOUT ROWID", "made WITHOUT"},
        {"(Name TEXT) STRICT", "made STRICT"},
        {"(Name TEXT, _RowId_ INTEGER)", "the column _RowId_"},
        {"(Name TEXT, Number INTEGER PRIMARY KEY)", "the column Number"},
        {"(Name TEXT); CREATE INDEX Odd ON T (abs(Name))", "the index Odd"},
        {"(Name TEXT); CREATE INDEX Some ON T (Name) WHERE Name > 'a'", "the index Some"},
        // Harmless, though a careless look could take it for one of the above.
        {"(\"Check\" TEXT DEFAULT 'CHECK (1)', [As] INT NOT NULL /* ON CONFLICT FAIL */)", ""},
        {"(Name TEXT REFERENCES U (Name) ON DELETE CASCADE, UNIQUE (Name))", ""},
    };
    for (const auto& [definition, refusal] : kCases) {
        std::filesystem::remove(path_);
        {
            test::OtherProgram program(path_);
            program.DefineCollation("elsewhere");
            program.Run(std::string("CREATE TABLE T ") + definition);
        }
        Database database = Database::Open(path_);
        const auto refused = test::ErrorOf([&] { database.OpenRecordset("T"); });
        EXPECT_EQ(refused.has_value(), *refusal != '\0') << definition;
        if (!refused) continue;
        EXPECT_EQ(refused->Number(), 3343) << definition;
        EXPECT_NE(std::string(refused->what()).find(refusal), std::string::npos) << refused->what();
    }
}

}  // namespace
}  // namespace tallymar::recordset
