#include <chrono>

#include <gtest/gtest.h>

#include "platform/recordset/Database.h"
#include "platform/recordset/Recordset.h"
#include "support/Failures.h"
#include "support/TempFolder.h"

namespace tallymar::recordset {
namespace {

TEST(ReadSnapshot, IsOneStateWhateverOthersWriteAndLetsThemGoOnAfterIt) {
    const test::TempFolder folder;
    Database database = Database::Create(folder / "a.mdb");
    database.CreateTable({.Name = "T", .Fields = {{.Name = "A", .Size = 4}}, .Indexes = {}});
    Recordset rows = database.OpenRecordset("T");
    Database beside = Database::Open(folder / "a.mdb", std::chrono::milliseconds(50));
    Recordset theirs = beside.OpenRecordset("T");
    const auto add = [](Recordset& to) {
        to.AddNew();
        to.Set("A", "x");
        to.Update();
    };
    add(theirs);
    {
        const ReadSnapshot snapshot(database);
        const ReadSnapshot nested(database);
        EXPECT_EQ(rows.RecordCount(), 1);
        EXPECT_EQ(test::FailureOf([&] { add(theirs); }), Failure::RecordLocked) << "it waits, and is told";
        rows.MoveFirst();
        rows.MoveNext();
        EXPECT_TRUE(rows.Eof());
        EXPECT_EQ(test::FailureOf([&] { add(rows); }), Failure::InvalidCall);
        rows.CancelUpdate();
        EXPECT_EQ(test::FailureOf([&] { RunBatch(database, OnFailure::KeepDone, [] {}); }), Failure::InvalidCall);
    }
    theirs.CancelUpdate();
    add(theirs);
    EXPECT_EQ(rows.RecordCount(), 2);
    add(rows);
    RunBatch(database, OnFailure::AllOrNothing, [&] {
        const ReadSnapshot within(database);
        add(rows);
    });
    EXPECT_EQ(theirs.RecordCount(), 4);
}

}  // namespace
}  // namespace tallymar::recordset
