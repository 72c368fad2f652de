#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "Things.h"
#include "platform/jet/Database.h"
#include "platform/jet/Recordset.h"
#include "support/TempFolder.h"

namespace tallymar::jet {
namespace {

class RecordsetTest : public testing::Test {
 protected:
    test::TempFolder folder_;
    Database database_ = CreateThings(folder_ / "things.mdb", 3);
    Recordset things_ = database_.OpenRecordset("Things");
};

TEST_F(RecordsetTest, EveryFailureHasItsNumberAndLeavesTheRowsAlone) {
    struct Case {
        const char* What;
        int Number;
        std::function<void()> Action;
    };
    const std::string bookmark = things_.Bookmark();
    Database other = CreateThings(folder_ / "other.mdb");
    const auto edit = [&] {
        things_.SetIndex("Name");
        things_.Edit();
    };
    const Case cases[] = {
        {"no such table", 3078, [&] { database_.OpenRecordset("Assets"); }},
        {"no such field", 3265, [&] { things_.Get("Nome"); }},
        {"an ordinal outside", 3265, [&] { things_.Get(6); }},
        {"no such index", 3265, [&] { things_.SetIndex("Nome"); }},
        {"seek without an index", 3019, [&] { things_.SetIndex(""), things_.Seek("101"); }},
        {"seek with another type", 13, [&] { things_.SetIndex("Amount"), things_.Seek("101"); }},
        {"seek with too many keys", 5,
         [&] {
             things_.SetIndex("Amount"), things_.Seek({CurrencyAmount(), CurrencyAmount()});
         }},
        {"set without edit", 3020, [&] { things_.MoveFirst(), things_.Set("Count", std::int16_t{1}); }},
        {"update without edit", 3020, [&] { things_.MoveFirst(), things_.Update(); }},
        {"another type", 13, [&] { edit(), things_.Set("Count", CurrencyAmount()); }},
        {"a date that is no number", 13, [&] { edit(), things_.Set("When", Date::FromSerial(std::nan(""))); }},
        {"a text too long", 3163, [&] { edit(), things_.Set("Name", "1234567"); }},
        {"an empty text", 3315, [&] { edit(), things_.Set("Name", ""); }},
        {"a Null key", 3058, [&] { edit(), things_.Set("Name", Value()), things_.Update(); }},
        {"a new row without its key", 3058, [&] { things_.AddNew(), things_.Update(); }},
        {"a key in use", 3022, [&] { edit(), things_.Set("Name", "102 "), things_.Update(); }},
        {"no current row to read", 3021, [&] { things_.MoveLast(), things_.MoveNext(), things_.Get("Name"); }},
        {"a move further past the end", 3021, [&] { things_.MoveLast(), things_.MoveNext(), things_.MoveNext(); }},
        {"a move further past the start", 3021, [&] { things_.MoveFirst(), things_.MovePrevious(), things_.MovePrevious(); }},
        {"an edit past the end", 3021, [&] { things_.MoveLast(), things_.MoveNext(), things_.Edit(); }},
        {"a delete past the end", 3021, [&] { things_.MoveLast(), things_.MoveNext(), things_.Delete(); }},
        {"a move after a vain seek", 3021, [&] { things_.SetIndex("Name"), things_.Seek("9"), things_.MoveNext(); }},
        {"a bookmark of nothing", 3159, [&] { things_.SetBookmark("Things:9"); }},
        {"no bookmark", 3159, [&] { things_.SetBookmark(""); }},
        {"a bookmark of another table", 3159, [&] { things_.SetBookmark("Company:1"); }},
        {"a Null read as a number", 94, [&] { things_.MoveFirst(), things_.Get("Count").Integer(); }},
        {"a number read as a text", 13, [&] { things_.MoveFirst(), things_.Get("Amount").Text(); }},
        {"a table that is there", 5, [&] { database_.CreateTable(ThingsTable()); }},
        {"an index that rows with Null break", 3058,
         [&] {
             database_.CreateIndex("Things", {"New", {"Count"}, false, true});
         }},
        {"an index on no field", 3265,
         [&] {
             database_.CreateIndex("Things", {"New", {"Nome"}});
         }},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(NumberOf(c.Action), c.Number) << c.What;
    }
    things_.SetBookmark(bookmark);
    EXPECT_EQ(things_.Get("Name").Text(), "101");
    EXPECT_EQ(things_.RecordCount(), 3);
}

TEST_F(RecordsetTest, AFailedUpdateKeepsTheEditPending) {
    things_.Edit();
    things_.Set("Name", "103");
    EXPECT_EQ(NumberOf([&] { things_.Update(); }), 3022);
    EXPECT_TRUE(things_.EditPending());
    EXPECT_EQ(things_.Get("Name").Text(), "103");
    things_.Set("Name", "104");
    things_.Update();
    EXPECT_EQ(things_.Get("Name").Text(), "104");
}

TEST_F(RecordsetTest, KeysIgnoreCaseAndTrailingBlanksButNotAccents) {
    AddThing(things_, "A1    ");
    AddThing(things_, "\xE9t\xE9");
    things_.SetIndex("name");
    for (const char* key : {"A1", "a1", "a1  "}) {
        things_.Seek(key);
        ASSERT_FALSE(things_.NoMatch()) << key;
        EXPECT_EQ(things_.Get("Name").Text(), "A1    ");
    }
    things_.Seek("\xE9T\xE9 ");
    EXPECT_FALSE(things_.NoMatch());
    things_.Seek(" A1");
    EXPECT_TRUE(things_.NoMatch());
    EXPECT_EQ(NumberOf([&] { AddThing(things_, "a1"); }), 3022);
}

TEST_F(RecordsetTest, ValuesComeBackExactly) {
    const double moment = 37848.0 + 1.0 / 3;
    things_.Edit();
    things_.Set("Note(1)", "\x80\x81\xFF \"'%");
    things_.Set("When", Date::FromSerial(moment));
    things_.Set("Amount", CurrencyAmount::FromTenThousandths(std::numeric_limits<std::int64_t>::min()));
    things_.Set("Count", std::int16_t{-32768});
    things_.Set("Flag", true);
    things_.Update();
    Recordset again = database_.OpenRecordset("Things");
    EXPECT_EQ(again.Get("Note(1)").Text(), "\x80\x81\xFF \"'%");
    EXPECT_EQ(again.Get("When").AsDate().Serial(), moment);
    EXPECT_EQ(again.Get("Amount").Currency().TenThousandths(), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(again.Get("Count").Integer(), -32768);
    EXPECT_TRUE(again.Get("Flag").Boolean());
    EXPECT_EQ(again.Get("Flag").ToText(), "True");
    EXPECT_EQ(again.Get("Count").ToText(), "-32768");
}

// Texts read stay good until the recordset moves, whatever is written meanwhile.
TEST_F(RecordsetTest, AFieldCanBeCopiedFromAnother) {
    things_.Edit();
    const std::string_view name = things_.Get("Name").Text();
    things_.Set("Note(1)", things_.Get("Name"));
    things_.Set("Name", "X" + std::string(things_.Get("Note(1)").Text()));
    things_.Update();
    things_.Edit();
    things_.Set("Note(1)", name);
    things_.Update();
    EXPECT_EQ(name, "101");
    EXPECT_EQ(things_.Get("Name").Text(), "X101");
    EXPECT_EQ(things_.Get("Note(1)").Text(), "101");
}

// A row number given out again would make an old bookmark show another asset.
TEST_F(RecordsetTest, ABookmarkOfADeletedRowNeverMeetsANewRow) {
    things_.MoveLast();
    const std::string bookmark = things_.Bookmark();
    things_.Delete();
    AddThing(things_, "NEW");
    EXPECT_EQ(NumberOf([&] { things_.SetBookmark(bookmark); }), 3159);
}

TEST_F(RecordsetTest, AnEmptyTableIsAtBothEnds) {
    things_.MoveFirst();
    for (int i = 0; i < 3; ++i) {
        things_.Delete();
        EXPECT_FALSE(things_.Eof());
        things_.MoveNext();
    }
    EXPECT_TRUE(things_.Bof());
    EXPECT_TRUE(things_.Eof());
    EXPECT_NO_THROW(things_.MoveFirst());
    EXPECT_NO_THROW(things_.MoveLast());
    EXPECT_EQ(things_.RecordCount(), 0);
}

TEST_F(RecordsetTest, FailsOnceItsDatabaseIsClosed) {
    things_.Edit();
    { const Database closing = std::move(database_); }
    EXPECT_EQ(NumberOf([&] { things_.MoveNext(); }), 5);
    EXPECT_EQ(NumberOf([&] { things_.Get("Name"); }), 5);
    EXPECT_EQ(NumberOf([&] { things_.Update(); }), 5);
    EXPECT_EQ(NumberOf([&] { things_.RecordCount(); }), 5);
}

TEST_F(RecordsetTest, InnerBatchesTakePartInTheOuter) {
    {
        WriteBatch outer(database_);
        AddThing(things_, "OUT");
        {
            WriteBatch inner(database_);
            AddThing(things_, "IN");
            inner.Rollback();
        }
        {
            WriteBatch inner(database_);
            AddThing(things_, "IN2");
        }
        EXPECT_EQ(things_.RecordCount(), 5);
        outer.Rollback();
    }
    EXPECT_EQ(things_.RecordCount(), 3);
    try {
        WriteBatch batch(database_);
        AddThing(things_, "DONE");
        AddThing(things_, "DONE");
    } catch (const PlatformError& error) {
        EXPECT_EQ(error.Code(), Failure::DuplicateKey);
    }
    EXPECT_EQ(Database::Open(folder_ / "things.mdb").OpenRecordset("Things").RecordCount(),
              4);  // what was done before the failure
}

}  // namespace
}  // namespace tallymar::jet
