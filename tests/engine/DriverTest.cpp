// What holds for every type: the checks before, the disposal, the depreciable amount, the cap, the month, and what a call may
// change.

#include <gtest/gtest.h>

#include "AllocationCounter.h"
#include "Assets.h"
#include "engine/DeprStatus.h"
#include "support/Failures.h"

namespace tallymar {
namespace {

using test::Day;
using test::kDeliveredTables;
using test::Money;
using test::TestAsset;
using test::YearEnd;

class Driver : public testing::Test {
 protected:
    ADepre engine{kDeliveredTables};

    void ExpectStatus(int code, std::string_view text) {
        EXPECT_EQ(engine.DeprStatusCode(), code);
        EXPECT_EQ(engine.DeprStatusText(), text);
    }
};

TestAsset Machine(Date inService = Day(2000, 3, 1)) {
    return TestAsset("PP", kMcrs, kDb, "5", "10000", inService).Declining(200).Convention("Y");
}
TestAsset Furniture() {
    return TestAsset("PP", kGenl, kSl, "10", "12000", Day(2000, 7, 1)).Convention("M");
}

TEST_F(Driver, ChecksLeaveTheLastStatusAndClearTheYear) {
    TestAsset later = Machine(Day(2004, 2, 1));
    later.Record.CurrDepr[1] = Money("77");
    later.Record.YearThru[1] = 3;
    EXPECT_EQ(later.Compute(engine, YearEnd(2003)), Money("0"));
    ExpectStatus(7, "< WARNING - NOT Current Month/Year");
    EXPECT_EQ(later.Record.YearThru[1], 3);
    EXPECT_EQ(later.Record.IRSConvUsed[1], "Y");

    TestAsset undated = Machine(Date());
    undated.Compute(engine, YearEnd(2003));
    ExpectStatus(1, "< ERROR - Invalid Date Format");
    undated.Record.Period[1] = Money("0.5");
    undated.Compute(engine, YearEnd(2003));
    ExpectStatus(9, "< ERROR - PERIOD is Zero");
    undated.Record.DeprType[1] = kXxxx;
    undated.Record.SwitchBasis[1] = Money("5");
    undated.Compute(engine, YearEnd(2003));
    ExpectStatus(17, "< ASSET is NON-Depreciable");
    EXPECT_EQ(undated.Record.SwitchBasis[1], Money("0"));

    TestAsset stock("PP", kStck, kDb, "5", "100", Day(2004, 1, 1));
    stock.Compute(engine, YearEnd(2003));
    EXPECT_EQ(engine.DeprStatusCode(), 7);
    EXPECT_EQ(stock.Record.IRSConvUsed[1], "X");

    Machine().Compute(engine, YearEnd(2000));
    ExpectStatus(0, "");
}

TEST_F(Driver, AnUnknownTypeIsAStatusAndStillGoesThroughTheRest) {
    TestAsset odd("PP", 11, kDb, "5", "1000", Day(2003, 1, 1));
    odd.Record.DeprLimit[1] = Money("9");
    odd.Record.CurrDepr[1] = Money("9");
    EXPECT_EQ(odd.Compute(engine, YearEnd(2003)), Money("0"));
    ExpectStatus(14, "< ERROR - Incorrect Deprec. Type");
    EXPECT_EQ(odd.Record.DeprLimit[1], Money("0"));
    EXPECT_EQ(odd.Record.IRSConvUsed[1], "Y");
    odd.Record.DeprType[1] = -3;
    odd.Compute(engine, YearEnd(2003));
    EXPECT_EQ(engine.DeprStatusCode(), 14);
}

TEST_F(Driver, TheFirstYearStampsTheConvention) {
    const std::tuple<const char*, bool, int, const char*> table[] = {{"X", false, 2000, "Y"}, {"Q", false, 2000, "Y"},
                                                                     {"N", false, 2000, "N"}, {"M", false, 2000, "M"},
                                                                     {"M", true, 2000, "Q"},  {"X", true, 2001, "X"}};
    for (const auto& [before, midQuarter, year, stamped] : table) {
        TestAsset asset = Furniture().Convention(before);
        asset.Compute(engine, YearEnd(year), midQuarter);
        EXPECT_EQ(asset.Record.IRSConvUsed[1], stamped) << before;
    }
}

TEST(DeprStatusTable, TextsThatNoComputationReaches) {
    const std::tuple<int, bool, const char*> table[] = {{6, false, "< CURRENT - In Service 1/5/2003"},
                                                        {52, true, "< ABANDONED - NO Depr. this Month/Year"},
                                                        {52, false, "< SOLD - NO Depr. this Month/Year"},
                                                        {21, false, "< ERROR   - "}};
    for (const auto& [code, abandoned, expected] : table) {
        EXPECT_EQ(DeprStatusText(code, abandoned, Date(), Day(2003, 1, 5)), expected);
    }
}

TEST_F(Driver, ChangesNothingButSevenFieldsOfItsBook) {
    TestAsset asset = Machine(Day(2003, 5, 1));
    asset.Record.Description = "A description that is longer than a short string holds in place";
    for (int book = 1; book <= 4; ++book) {
        asset.Record.CurrDepr[book] = asset.Record.AddlDepr[book] = asset.Record.DeprLimit[book] = Money("1");
        asset.Record.SwitchBasis[book] = asset.Record.PrevDepr[book] = Money("2");
        asset.Record.YearThru[book] = 9;
        asset.Record.DateDeprToo[book] = YearEnd(2002);
    }
    asset.Record.Auto[1] = true;
    asset.Record.Section179[1] = Money("9000");
    AssetRecord expected = asset.Record;
    asset.Compute(engine, YearEnd(2003));
    EXPECT_EQ(asset.Record.Section179[1], Money("7660"));
    expected.CurrDepr[1] = asset.Record.CurrDepr[1];
    expected.AddlDepr[1] = asset.Record.AddlDepr[1];
    expected.DeprLimit[1] = asset.Record.DeprLimit[1];
    expected.Section179[1] = asset.Record.Section179[1];
    expected.YearThru[1] = asset.Record.YearThru[1];
    EXPECT_EQ(asset.Record, expected);
}

TEST_F(Driver, AFailureLeavesTheRecordAsItWas) {
    for (const int method : {int{kMi}, int{kAc}, int{kLh}, int{kUt}, int{kXx}, 8, -1}) {
        TestAsset asset("PP", kAds, method, "5", "1000", Day(2003, 2, 1));
        asset.Convention("X").Record.CurrDepr[1] = Money("5");
        asset.Record.AddlDepr[1] = Money("7");
        const AssetRecord before = asset.Record;
        EXPECT_EQ(test::FailureOf([&] { asset.Compute(engine, YearEnd(2003)); }), Failure::TypeMismatch);
        EXPECT_EQ(asset.Record, before) << "method " << method;
    }
    TestAsset asset = Machine();
    EXPECT_THROW(engine.ComputeDepreciation(asset.Record, YearEnd(2000), false, 5), PlatformError);
}

TEST_F(Driver, AllocatesNothingOnceItHasRun) {
    std::vector<TestAsset> assets;
    for (const int type : {int{kMcrs}, int{kXxxx}, int{kGenl}, int{kAcrs}, 11}) {
        for (const std::string_view kind : {"PP", "RL"}) {
            for (const int method : {int{kDb}, int{kSl}}) {
                TestAsset asset(kind, type, method, "5", "12345.67", Day(2000, 4, 1));
                asset.Declining(200).Convention("Y").Record.Description = std::string(32, 'd');
                asset.Record.ADPct[1] = Money("30");
                asset.Record.Auto[1] = true;
                assets.push_back(asset);
                assets.push_back(asset.SoldOn(Day(2003, 11, 15)));
                asset.Record.Abandoned = true;
                assets.push_back(asset);
            }
        }
    }
    const auto run = [&] {
        for (TestAsset& asset : assets) {
            for (int year = 1999; year < 2008; ++year) asset.Compute(engine, YearEnd(year), year % 2 == 0);
        }
    };
    run();
    const std::size_t before = test::AllocationCount();
    run();
    EXPECT_EQ(test::AllocationCount(), before);
}

}  // namespace
}  // namespace tallymar
