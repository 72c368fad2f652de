#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <thread>

#include "Things.h"
#include "support/Child.h"
#include "support/OtherProgram.h"

// What happens to a file when the disk, another program, or the machine's power gets in the way.
namespace tallymar::recordset {
namespace {

using namespace std::chrono_literals;
using test::Child;

// Another process that holds a lock on the file until it is killed.
class LockedElsewhere {
 public:
    LockedElsewhere(const std::filesystem::path& path, const std::string& sql)
        : child_([&](const Child::Ready& ready) {
              test::OtherProgram program(path);
              program.Run(sql);
              ready();
              std::this_thread::sleep_for(60s);
              return 0;
          }) {
        child_.AwaitReady();
    }

 private:
    Child child_;
};

class DurabilityTest : public testing::Test {
 protected:
    test::TempFolder folder_;
    std::filesystem::path path_ = folder_ / "things.mdb";
};

TEST_F(DurabilityTest, AnotherWriterIsWaitedForBrieflyAndThenNamed) {
    { CreateThings(path_, 3); }
    const auto start = std::chrono::steady_clock::now();
    {
        const LockedElsewhere other(path_, "BEGIN IMMEDIATE; DELETE FROM Things");
        Database database = Database::Open(path_, 100ms);
        Recordset things = database.OpenRecordset("Things");
        EXPECT_EQ(things.RecordCount(), 3);  // reading goes on
        EXPECT_EQ(NumberOf([&] { things.Delete(); }), 3260);
        EXPECT_EQ(NumberOf([&] { AddThing(things, "NEW"); }), 3260);
        EXPECT_EQ(NumberOf([&] { RunBatch(database, OnFailure::KeepDone, [] {}); }), 3260);
        EXPECT_NE(TextOf([&] { things.Delete(); }).find("things.mdb"), std::string::npos);
    }
    {
        const LockedElsewhere other(path_, "BEGIN EXCLUSIVE; DELETE FROM Things");
        EXPECT_EQ(NumberOf([&] { Database::Open(path_, 100ms); }), 3260);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
    EXPECT_EQ(Database::Open(path_).OpenRecordset("Things").RecordCount(), 3);
}

// A report that somebody reads must not keep others from writing: no lock is held between calls.
TEST_F(DurabilityTest, AnOpenRecordsetHoldsNoLock) {
    Database database = CreateThings(path_, 100);
    Recordset things = database.OpenRecordset("Things");
    things.SetIndex("Name");
    for (int i = 0; i < 10; ++i) things.MoveNext();
    EXPECT_NO_THROW(test::OtherProgram(path_).Run("UPDATE Things SET Count = 1"));
}

// A reader that stays keeps a batch from its commit: then none of the batch is there, and the caller is told so, beside what else
// went wrong.
TEST_F(DurabilityTest, AFailedCommitKeepsNothingAndSaysSo) {
    { CreateThings(path_, 3); }
    Database database = Database::Open(path_, 100ms);
    Recordset things = database.OpenRecordset("Things");
    {
        const LockedElsewhere reader(path_, "BEGIN; SELECT * FROM Things");
        const auto count = [&](bool fails) {
            return TextOf([&] {
                RunBatch(database, OnFailure::KeepDone, [&] {
                    things.Edit();
                    things.Set("Count", std::int16_t{1});
                    things.Update();
                    if (fails) throw PlatformError(Failure::Overflow);
                });
            });
        };
        const std::string locked =
            "The database is locked by another program: " + path_.string() + ". Nothing that this command changed has been kept.";
        EXPECT_EQ(count(false), locked);
        EXPECT_EQ(count(true), "Overflow. Then: " + locked);
    }
    EXPECT_TRUE(things.Get("Count").IsNull());
    AddThing(things, "LATER");
    EXPECT_EQ(things.RecordCount(), 4);
}

TEST_F(DurabilityTest, AFileThatCannotBeWrittenOpensForReading) {
    { CreateThings(path_, 3); }
    namespace fs = std::filesystem;
    fs::permissions(folder_.Path(), fs::perms(0755));
    const auto readsOnly = [&] {
        // The superuser may write anything.
        if (geteuid() == 0 && setresuid(65534, 65534, 65534) != 0) return 252;
        Database database = Database::Open(path_);
        Recordset things = database.OpenRecordset("Things");
        things.SetIndex("Name");
        things.MoveLast();
        if (things.Get("Name").Text() != "103" || things.RecordCount() != 3) return 1;
        if (NumberOf([&] { things.Delete(); }) != 3027) return 2;
        if (NumberOf([&] { AddThing(things, "NEW"); }) != 3027) return 3;
        const auto addInBatch = [&] { RunBatch(database, OnFailure::KeepDone, [&] { AddThing(things, "NEW"); }); };
        if (NumberOf(addInBatch) != 3027) return 4;
        if (NumberOf([&] { database.CreateField("Things", {"More", FieldType::Date}); }) != 3027) return 5;
        return 0;
    };
    fs::permissions(path_, fs::perms(0444));
    EXPECT_EQ(Child(readsOnly).Wait(), 0) << "a file without write permission";
    fs::permissions(path_, fs::perms(0666));
    fs::permissions(folder_.Path(), fs::perms(0555));
    EXPECT_EQ(Child(readsOnly).Wait(), 0) << "a folder without write permission";
    fs::permissions(folder_.Path(), fs::perms(0755));
    fs::permissions(path_, fs::perms(0));
    const auto isRefused = [&] {
        if (geteuid() == 0 && setresuid(65534, 65534, 65534) != 0) return 252;
        return NumberOf([&] { Database::Open(path_); });
    };
    EXPECT_EQ(Child(isRefused).Wait(), 70);
}

TEST_F(DurabilityTest, ABatchKilledAtAnyMomentIsWhollyThereOrNotAtAll) {
    constexpr int kRows = 2000;
    { CreateThings(path_, kRows); }
    std::mt19937 random(17);
    std::set<int> seen;
    int leftJournals = 0;
    for (int round = 0; round < 25; ++round) {
        {
            Child writer([&] {
                Database database = Database::Open(path_);
                Recordset things = database.OpenRecordset("Things");
                for (std::int16_t pass = static_cast<std::int16_t>(round * 100);; ++pass) {
                    RunBatch(database, OnFailure::AllOrNothing, [&] {
                        for (things.MoveFirst(); !things.Eof(); things.MoveNext()) {
                            things.Edit();
                            things.Set("Count", pass);
                            things.Set("Amount", CurrencyAmount::FromInteger(pass));
                            things.Update();
                        }
                    });
                }
                return 0;
            });
            writer.KillAfter(std::chrono::microseconds(std::uniform_int_distribution<int>(2000, 60000)(random)));
        }
        leftJournals += std::filesystem::exists(path_.string() + "-journal") ? 1 : 0;
        Database database = Database::Open(path_);
        Recordset things = database.OpenRecordset("Things");
        ASSERT_EQ(things.RecordCount(), kRows);
        if (things.Get("Count").IsNull()) continue;  // killed before its first commit
        const std::int16_t pass = things.Get("Count").Integer();
        seen.insert(pass);
        for (; !things.Eof(); things.MoveNext()) {
            ASSERT_EQ(things.Get("Count").Integer(), pass);
            ASSERT_EQ(things.Get("Amount").Currency(), CurrencyAmount::FromInteger(pass));
        }
    }
    EXPECT_EQ(test::OtherProgram(path_).Run("PRAGMA integrity_check"), (std::vector<std::string>{"ok"}));
    EXPECT_GT(seen.size(), 3U);
    EXPECT_GT(leftJournals, 0) << "no kill came in the middle of a write";
}

// The batch gives the failure, the file is as it was before, and the recordset works on.
int FillUntilItFails(const std::filesystem::path& path, int expected, bool beforeCommit = false) {
    Database database = Database::Open(path);
    Recordset things = database.OpenRecordset("Things");
    const std::int64_t before = things.RecordCount();
    bool committing = false;
    const int number = NumberOf([&] {
        RunBatch(database, OnFailure::KeepDone, [&] {
            try {
                for (int i = 0; i < 50000; ++i) AddThing(things, "N" + std::to_string(i));
            } catch (const PlatformError&) {
                // Nothing may slip in after what has been taken back.
                if (NumberOf([&] { AddThing(things, "LATER"); }) != expected) throw std::logic_error("written after all");
                throw;
            }
            committing = true;
        });
    });
    if (number != expected) return number == 0 ? 1 : 2;
    if (committing == beforeCommit) return 6;
    if (things.RecordCount() != before) return 3;
    things.MoveFirst();
    things.Edit();
    things.Set("Count", std::int16_t{7});
    things.Update();
    if (things.Get("Count").Integer() != 7) return 4;
    const auto check = test::OtherProgram(path).Run("PRAGMA integrity_check");
    return check.size() == 1 && check[0] == "ok" ? 0 : 5;
}

TEST_F(DurabilityTest, AFailingDiskTakesTheBatchBack) {
    { CreateThings(path_, 10); }
    for (const bool beforeCommit : {false, true}) {
        Child child([&] {
            // Writing beyond the limit fails as a bad disk does.
            signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{256 * 1024, 256 * 1024};
            if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return 252;
            // Short of memory, SQLite writes before the commit, and takes the transaction back by itself when that fails.
            if (beforeCommit) sqlite3_soft_heap_limit64(512 * 1024);
            return FillUntilItFails(path_, 57, beforeCommit);
        });
        EXPECT_EQ(child.Wait(), 0) << (beforeCommit ? "in the middle" : "at the commit");
    }
}

TEST_F(DurabilityTest, AFullDiskTakesTheBatchBack) {
    const std::filesystem::path disk = folder_ / "disk";
    std::filesystem::create_directory(disk);
    if (mount("tmpfs", disk.c_str(), "tmpfs", 0, "size=512k") != 0) GTEST_SKIP() << "no permission to mount a small disk";
    { CreateThings(disk / "things.mdb", 10); }
    const int result = Child([&] { return FillUntilItFails(disk / "things.mdb", 61); }).Wait();
    umount(disk.c_str());
    EXPECT_EQ(result, 0);
}

}  // namespace
}  // namespace tallymar::recordset
