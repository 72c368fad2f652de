#include <gtest/gtest.h>

#include "Things.h"
#include "support/Files.h"
#include "support/OtherProgram.h"

// What stands in a file: for this program's next opening, and for other programs that read and write it.
namespace tallymar::recordset {
namespace {

using Rows = std::vector<std::string>;

class FileTest : public testing::Test {
 protected:
    test::TempFolder folder_;
    std::filesystem::path path_ = folder_ / "things.mdb";
};

TEST_F(FileTest, DefinitionsComeBackFromTheFile) {
    TableDef odd{.Name = "Odd \"one\"",
                 .Fields = {{"A]b", FieldType::Text, 3, false}, {"C,(d)", FieldType::Date, 0, false}},
                 .Indexes = {}};
    odd.Indexes = {{"Second_Of", {"C,(d)", "A]b"}, false, true}, {"P", {"A]b"}, true, false}};
    {
        Database database = CreateThings(path_);
        database.CreateTable(odd);
        database.CreateField("things", {"Late", FieldType::Text});
        database.CreateIndex("Things", {"Late", {"Late", "Count"}, false, true});
    }
    Database database = Database::Open(path_);
    TableDef things = ThingsTable();
    things.Fields.push_back({"Late", FieldType::Text, 255, false});
    things.Indexes.push_back({"Late", {"Late", "Count"}, false, true});
    EXPECT_TRUE(database.GetTableDef("THINGS") == things);
    EXPECT_TRUE(database.GetTableDef(odd.Name) == odd);
    EXPECT_EQ(database.TableNames(), (Rows{"Things", odd.Name}));
    Recordset rows = database.OpenRecordset(odd.Name);
    rows.SetIndex("Second_Of");
    rows.AddNew();
    rows.Set("A]b", "x");
    EXPECT_EQ(NumberOf([&] { rows.Update(); }), 3058);  // Required, though not primary
}

TEST_F(FileTest, ANewBooleanIsFalseInOldRowsAndInNewOnes) {
    Database database = CreateThings(path_, 2);
    Recordset before = database.OpenRecordset("Things");
    database.CreateField("Things", {"Sold", FieldType::Boolean, 0, false});
    database.CreateField("Things", {"More", FieldType::Currency, 0, false});
    EXPECT_EQ(NumberOf([&] { before.MoveFirst(); }), 5);  // its definition is out of date
    Recordset things = database.OpenRecordset("Things");
    AddThing(things, "NEW");
    for (things.MoveFirst(); !things.Eof(); things.MoveNext()) {
        EXPECT_FALSE(things.Get("Sold").Boolean());
        EXPECT_TRUE(things.Get("More").IsNull());
    }
}

TEST_F(FileTest, OtherProgramsReadAndWriteIt) {
    {
        Database database = CreateThings(path_, 1);
        Recordset things = database.OpenRecordset("Things");
        things.Edit();
        things.Set("Note(1)", "\x80 \xE9");
        things.Set("When", Date::FromSerial(37848));
        things.Set("Flag", true);
        things.Update();
    }
    test::OtherProgram program(path_);
    EXPECT_EQ(program.Run("SELECT *, typeof(\"When\"), typeof(Amount) FROM Things"),
              (Rows{"101|\u20AC \u00E9|37848.0|10000|NULL|-1|real|integer"}));
    EXPECT_EQ(program.Run("SELECT name FROM sqlite_schema WHERE type = 'table'"), (Rows{"Things"}));
    EXPECT_EQ(program.Run("PRAGMA integrity_check"), (Rows{"ok"}));
    EXPECT_EQ(program.Run("PRAGMA application_id"), (Rows{std::to_string(kApplicationId)}));
    EXPECT_EQ(program.Run("PRAGMA journal_mode"), (Rows{"delete"}));
    EXPECT_THROW(program.Run("INSERT INTO Things (Name) VALUES ('101  ')"), std::runtime_error);  // unique as we see it
    program.Run("INSERT INTO Things (Name, Amount) VALUES ('B', 5), ('a', 6)");
    Database database = Database::Open(path_);
    Recordset things = database.OpenRecordset("Things");
    things.SetIndex("Name");
    things.MoveLast();
    EXPECT_EQ(things.Get("Name").Text(), "B");
}

// Nothing that another program has left in a file may crash a read, stop a pass over the rows, or be lost by an edit beside it.
TEST_F(FileTest, StrangeContentsAreReadAndPassedOver) {
    { CreateThings(path_); }
    test::OtherProgram program(path_);
    program.Run(R"sql(INSERT INTO Things (Name, "Note(1)", "When", Amount, Count, Flag) VALUES
        ('overlong name', 'a note much too long', 'soon', 1.5, 70000, NULL),
        (NULL, '→ arrow', 38000, 'none', 2.5, 1),
        (NULL, '← arrow', NULL, x'0102', -7, 0),
        (x'414243', '', '', 1e300, NULL, 0))sql");
    Database database = Database::Open(path_);
    Recordset things = database.OpenRecordset("Things");
    EXPECT_EQ(things.Get("Name").Text(), "overlong name");
    EXPECT_EQ(things.Get("Amount").Currency().TenThousandths(), 2);
    EXPECT_EQ(things.Get("When").ToText(), "soon");
    EXPECT_EQ(NumberOf([&] { things.Get("Count"); }), 6);
    EXPECT_EQ(NumberOf([&] { things.Get("Flag").Boolean(); }), 94);
    things.Edit();
    things.Set("Name", "overlong name");  // as it is: not refused
    things.Set("Count", std::int16_t{1});
    things.Update();
    for (const char* index : {"", "Name", "Note", "Amount"}) {
        things.SetIndex(index);
        int rows = 0;
        for (; !things.Eof() && rows < 10; things.MoveNext()) ++rows;
        for (things.MoveLast(); !things.Bof() && rows < 20; things.MovePrevious()) ++rows;
        EXPECT_EQ(rows, 4 + 4) << index;
    }
    RunBatch(database, OnFailure::AllOrNothing, [&] {
        for (things.MoveFirst(); !things.Eof(); things.MoveNext()) {
            things.Edit();
            const Value note = things.Get("Note(1)");
            things.Set("Note(1)", note);
            things.Set("Flag", true);
            things.Set("When", Date::FromSerial(1));
            things.Update();
        }
    });
    EXPECT_EQ(program.Run("SELECT \"Note(1)\", Flag FROM Things WHERE Name IS NULL"),
              (Rows{"\u2192 arrow|-1", "\u2190 arrow|-1"}));
}

// An update may write further columns along for speed, but only what they certainly hold.
TEST_F(FileTest, AnUpdateLeavesAloneWhatItHasNotChanged) {
    Database database = Database::Create(path_);
    database.CreateTable(
        {"Plain", {{"Text", FieldType::Text, 9, true}, {"A", FieldType::Integer}, {"B", FieldType::Integer}}, {}});
    test::OtherProgram program(path_);
    program.Run("INSERT INTO Plain VALUES ('x', 1, 1), ('→', 2, 2)");
    Recordset plain = database.OpenRecordset("Plain");
    Recordset second = database.OpenRecordset("Plain");
    const auto set = [](Recordset& rows, const char* field, std::int16_t value) {
        rows.Edit();
        rows.Set(field, value);
    };
    RunBatch(database, OnFailure::AllOrNothing, [&] {
        plain.MoveFirst();
        set(plain, "A", 10);
        plain.Set("B", std::int16_t{10});
        plain.Set("Text", "y");
        plain.Update();
        set(plain, "A", 11);
        set(second, "B", 20);
        second.Update();
        plain.Update();
        plain.MoveNext();
        set(plain, "A", 12);
        plain.Set("B", std::int16_t{13});
        plain.Update();
    });
    EXPECT_EQ(program.Run("SELECT * FROM Plain"), (Rows{"y|11|20", "→|12|13"}));
}

TEST_F(FileTest, ACopyHasTheRightsOfTheFileAndNoMore) {
    Database database = CreateThings(path_, 3);
    namespace fs = std::filesystem;
    for (const fs::perms rights : {fs::perms(0600), fs::perms(0664)}) {
        fs::permissions(path_, rights);
        test::WriteAll(folder_ / "copy.mdb", "something that everybody may read");
        database.CopyTo(folder_ / "copy.mdb");
        EXPECT_EQ(fs::status(folder_ / "copy.mdb").permissions(), rights);
        EXPECT_EQ(Database::Open(folder_ / "copy.mdb").OpenRecordset("Things").RecordCount(), 3);
    }
}

TEST_F(FileTest, AChangeByAnotherProgramIsSeen) {
    Database database = CreateThings(path_, 3);
    Recordset things = database.OpenRecordset("Things");
    EXPECT_EQ(things.RecordCount(), 3);
    test::OtherProgram program(path_);
    program.Run("INSERT INTO Things (Name) VALUES ('NEW'); UPDATE Things SET Count = 5 WHERE Name = '101'");
    EXPECT_EQ(things.RecordCount(), 4);
    things.Edit();  // sees the row as it is now
    EXPECT_EQ(things.Get("Count").Integer(), 5);
    things.Set("Flag", true);
    things.Update();
    EXPECT_EQ(program.Run("SELECT Count, Flag FROM Things WHERE Name = '101'"), (Rows{"5|-1"}));
    program.Run("UPDATE Things SET Count = 6 WHERE Name = '101'");
    RunBatch(database, OnFailure::AllOrNothing,
             [&] { EXPECT_EQ(things.Get("Count").Integer(), 6) << "not what was read before"; });
    program.Run("DELETE FROM Things WHERE Name = '101'");
    EXPECT_EQ(NumberOf([&] { things.Edit(); }), 3021);
    things.MoveNext();
    EXPECT_EQ(things.Get("Name").Text(), "102");
}

TEST_F(FileTest, WhatIsNoDatabaseOrOnlyPartOfOneIsRefusedAtOpening) {
    { CreateThings(path_, 500); }
    const std::string whole = test::ReadAll(path_);
    const auto write = [&](const std::string& contents) { test::WriteAll(path_, contents); };
    const auto open = [&] { Database::Open(path_); };
    for (const std::size_t length : {0UL, 50UL, 700UL, 4096UL, whole.size() / 2, whole.size() - 4096, whole.size() - 1}) {
        write(whole.substr(0, length));
        EXPECT_EQ(NumberOf(open), 3343) << length << " of " << whole.size() << " bytes";
    }
    write("AssetNum,Division,Department\n" + std::string(5000, 'x'));
    EXPECT_EQ(NumberOf(open), 3343);
    EXPECT_NE(TextOf(open).find("things.mdb"), std::string::npos);
    write(whole);
    EXPECT_EQ(NumberOf(open), 0);
    EXPECT_EQ(NumberOf([&] { Database::Open(folder_ / "absent.mdb"); }), 3024);
    EXPECT_EQ(NumberOf([&] { Database::Open(folder_.Path()); }), 3024);
    EXPECT_EQ(NumberOf([&] { Database::Create(folder_.Path()); }), 3024);
}

TEST_F(FileTest, AnOrdinaryDatabaseOpensAndLacksTheTable) {
    test::OtherProgram(path_).Run("PRAGMA journal_mode = WAL; CREATE TABLE Letters (a)");
    Database database = Database::Open(path_);
    EXPECT_EQ(NumberOf([&] { database.OpenRecordset("Assets"); }), 3078);
    EXPECT_EQ(test::OtherProgram(path_).Run("PRAGMA journal_mode"), (Rows{"delete"}));
    test::OtherProgram(path_).Run("PRAGMA application_id = " + std::to_string(kApplicationId) + "; PRAGMA user_version = 2");
    EXPECT_NE(TextOf([&] { Database::Open(path_); }).find("later release"), std::string::npos);
}

TEST_F(FileTest, CreatingReplacesAFileAndWhatStandsBesideIt) {
    { CreateThings(path_, 5); }
    test::WriteAll(path_.string() + "-journal", "left over");
    Database database = Database::Create(path_);
    EXPECT_TRUE(database.TableNames().empty());
    EXPECT_FALSE(std::filesystem::exists(path_.string() + "-journal"));
}

}  // namespace
}  // namespace tallymar::recordset
