#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

#include "Things.h"

namespace tallymar::recordset {
namespace {

class RecordsetTest : public testing::Test {
 protected:
    test::TempFolder folder_;
    Database database_ = CreateThings(folder_ / "things.mdb", 3);
    Recordset things_ = database_.OpenRecordset("Things");
};

TEST_F(RecordsetTest, EveryFailureHasItsNumberAndLeavesTheRowsAlone) {
    const std::string bookmark = things_.Bookmark();
    const auto edit = [&] {
        things_.SetIndex("Name");
        things_.Edit();
    };
    const auto index = [&](const char* field) { database_.CreateIndex("Things", {"New", {field}, false, true}); };
    const auto seekTwo = [&](const Value& key) { things_.Seek({key, key}); };
    const std::tuple<const char*, int, std::function<void()>> cases[] = {
        {"no such table", 3078, [&] { database_.OpenRecordset("Assets"); }},
        {"no such field", 3265, [&] { things_.Get("Nome"); }},
        {"an ordinal outside", 3265, [&] { things_.Get(6); }},
        {"no such index", 3265, [&] { things_.SetIndex("Nome"); }},
        {"seek with another type", 13, [&] { things_.SetIndex("amount"), things_.Seek("101"); }},
        {"seek with too many keys", 5, [&] { things_.SetIndex("Amount"), seekTwo(CurrencyAmount()); }},
        {"set without edit", 3020, [&] { things_.MoveFirst(), things_.Set("Count", std::int16_t{1}); }},
        {"another type", 13, [&] { edit(), things_.Set("Count", CurrencyAmount()); }},
        {"a date that is no number", 13, [&] { edit(), things_.Set("When", Date::FromSerial(std::nan(""))); }},
        {"a text too long", 3163, [&] { edit(), things_.Set("Name", "1234567"); }},
        {"an empty text", 3315, [&] { edit(), things_.Set("Name", ""); }},
        {"a bookmark of nothing", 3159, [&] { things_.SetBookmark("Things:9"); }},
        {"a bookmark of another table", 3159, [&] { things_.SetBookmark("Company:1"); }},
        {"a Null read as a number", 94, [&] { things_.MoveFirst(), things_.Get("Count").Integer(); }},
        {"a number read as a text", 13, [&] { things_.MoveFirst(), things_.Get("Amount").Text(); }},
        {"a table that is there", 5, [&] { database_.CreateTable(ThingsTable()); }},
        {"an index that rows with Null break", 3058, [&] { index("Count"); }},
        {"an index on no field", 3265, [&] { index("Nome"); }}};
    for (const auto& [what, number, action] : cases) EXPECT_EQ(NumberOf(action), number) << what;
    things_.SetBookmark(bookmark);
    EXPECT_EQ(things_.Get("Name").Text(), "101");
    EXPECT_EQ(things_.RecordCount(), 3);
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

TEST_F(RecordsetTest, FailsOnceItsDatabaseIsClosed) {
    things_.Edit();
    { const Database closing = std::move(database_); }
    EXPECT_EQ(NumberOf([&] { things_.MoveNext(); }), 5);
    EXPECT_EQ(NumberOf([&] { things_.Get("Name"); }), 5);
    EXPECT_EQ(NumberOf([&] { things_.Update(); }), 5);
}

}  // namespace
}  // namespace tallymar::recordset
