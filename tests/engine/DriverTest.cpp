// What holds for every type: the checks before, the disposal, the depreciable amount, the cap, the month, and what a call may
// change.

#include <gtest/gtest.h>

#include "AllocationCounter.h"
#include "Assets.h"
#include "engine/DeprStatus.h"
#include "platform/runtime/PlatformError.h"

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
    const auto stamped = [this](std::string_view before, bool midQuarter, int year) {
        TestAsset asset = Furniture().Convention(before);
        asset.Compute(engine, YearEnd(year), midQuarter);
        return asset.Record.IRSConvUsed[1].ToString();
    };
    EXPECT_EQ(stamped("X", false, 2000), "Y");
    EXPECT_EQ(stamped("Q", false, 2000), "Y");
    EXPECT_EQ(stamped("N", false, 2000), "N");
    EXPECT_EQ(stamped("M", false, 2000), "M");
    EXPECT_EQ(stamped("M", true, 2000), "Q");
    EXPECT_EQ(stamped("X", true, 2001), "X");
}

TEST_F(Driver, WhatMakesADisposal) {
    const auto disposed = [this](void (*bend)(AssetRecord&)) {
        TestAsset asset = Furniture();
        asset.Record.DateSold = Day(2003, 6, 15);
        bend(asset.Record);
        asset.Compute(engine, YearEnd(2003));
        return engine.DeprStatusCode() == 51;
    };
    EXPECT_FALSE(disposed([](AssetRecord&) {})) << "a date alone sells nothing";
    EXPECT_TRUE(disposed([](AssetRecord& r) { r.LikeKind = true; }));
    EXPECT_TRUE(disposed([](AssetRecord& r) { r.Casualty = true; }));
    EXPECT_TRUE(disposed([](AssetRecord& r) { r.SoldExpense = Money("0.01"); }));
    EXPECT_FALSE(disposed([](AssetRecord& r) { r.SoldExpense = Money("-1"); }));
    EXPECT_FALSE(disposed([](AssetRecord& r) {
        r.SoldAmount = Money("10");
        r.Sold = true;
        r.Notice4 = true;
    })) << "an exchange under the notice goes on depreciating";
    EXPECT_TRUE(disposed([](AssetRecord& r) {
        r.Sold = true;
        r.Notice4 = true;
    }));
}

TEST_F(Driver, StatusTextsOfADisposal) {
    TestAsset sold = Furniture().SoldOn(Day(2003, 8, 15));
    sold.Compute(engine, YearEnd(2003));
    ExpectStatus(51, "< SOLD - Depreciated to 8/15/2003");
    sold.Record.Abandoned = true;
    sold.Compute(engine, YearEnd(2003));
    ExpectStatus(51, "< ABANDONED - Depreciated to 8/15/2003");
    EXPECT_EQ(sold.Compute(engine, YearEnd(2004)), Money("0"));
    ExpectStatus(5, "< SOLD 8/15/2003 - NO Depr. this Year");

    sold.Record.DateSold = Date();
    sold.Record.DeprType[1] = kMcrs;
    sold.Compute(engine, YearEnd(2003));
    ExpectStatus(20, "< ERROR - Invalid Sold Date");
}

TEST(DeprStatusTable, EveryNumberHasItsText) {
    std::string text;
    PutDeprStatusText(6, false, Date(), Day(2003, 1, 5), text);
    EXPECT_EQ(text, "< CURRENT - In Service 1/5/2003");
    PutDeprStatusText(52, true, Date(), Date(), text);
    EXPECT_EQ(text, "< ABANDONED - NO Depr. this Month/Year");
    PutDeprStatusText(52, false, Date(), Date(), text);
    EXPECT_EQ(text, "< SOLD - NO Depr. this Month/Year");
    PutDeprStatusText(21, false, Date(), Date(), text);
    EXPECT_EQ(text, "< ERROR   - ");
}

// GENL straight line under "M" gives (2 x SaleMonth - 1) / 24 of 1,200, so the amount tells the fiscal month of the sale.
TEST_F(Driver, PlacesTheSaleInItsFiscalYear) {
    const auto amount = [this](Date sold, Date asOf) { return Furniture().SoldOn(sold).Compute(engine, asOf); };
    EXPECT_EQ(amount(Day(2003, 5, 1), YearEnd(2003)), Money("450"));
    EXPECT_EQ(amount(Day(2003, 12, 31), YearEnd(2003)), Money("1150"));
    EXPECT_EQ(amount(Day(2004, 1, 1), YearEnd(2003)), Money("1200")) << "a later year's sale";
    EXPECT_EQ(amount(Day(2002, 12, 31), YearEnd(2003)), Money("0"));
    // Fiscal years to June 30.
    EXPECT_EQ(amount(Day(2003, 8, 15), Day(2003, 6, 30)), Money("1200")) << "the next fiscal year's sale";
    EXPECT_EQ(engine.DeprStatusCode(), 0);
    EXPECT_EQ(amount(Day(2002, 8, 15), Day(2003, 6, 30)), Money("150")) << "month 2";
    EXPECT_EQ(amount(Day(2003, 6, 1), Day(2003, 6, 30)), Money("1150")) << "month 12";
    EXPECT_EQ(amount(Day(2002, 6, 30), Day(2003, 6, 30)), Money("0"));
    EXPECT_EQ(engine.DeprStatusCode(), 5);
    EXPECT_EQ(amount(Day(2003, 5, 1), Day(2003, 12, 30)), Money("450")) << "not the last day of December";
}

TEST_F(Driver, DepreciableAmount) {
    TestAsset asset("PP", kGenl, kSl, "1", "1000", Day(2003, 1, 1));
    asset.Convention("N");
    asset.Record.BusinessUse = Money("66.67");
    asset.Record.Salvage[1] = Money("50");
    asset.Record.Section179[1] = Money("100");
    EXPECT_EQ(asset.Compute(engine, YearEnd(2003)), Money("516.70"));

    asset.Record.ADPct[1] = Money("30");
    EXPECT_EQ(asset.Compute(engine, YearEnd(2003)), Money("361.69"));
    EXPECT_EQ(asset.Record.AddlDepr[1], Money("155.01"));
}

TEST_F(Driver, TaxCreditTakesHalfOffTheBasis) {
    const auto maxDepr = [this](std::string_view credit, std::string_view classLife, int year) {
        TestAsset asset("PP", kGenl, kSl, "1", "1000", Day(year, 1, 1));
        asset.Convention("N").Record.TaxCredit[1] = Money(credit);
        asset.Record.ClassLife = Money(classLife);
        return asset.Compute(engine, YearEnd(year));
    };
    EXPECT_EQ(maxDepr("100", "10", 1982), Money("1000"));
    EXPECT_EQ(maxDepr("100", "10", 1983), Money("950"));
    EXPECT_EQ(maxDepr("90", "10", 1983), Money("1000")) << "exactly 9% is the reduced credit";
    EXPECT_EQ(maxDepr("60", "4", 1983), Money("970"));
    EXPECT_EQ(maxDepr("50", "4", 1983), Money("1000"));
    EXPECT_EQ(maxDepr("100", "4.5", 1983), Money("900")) << "between 4 and 5 years both tests hold";
    EXPECT_EQ(maxDepr("91", "4.5", 1983), Money("909")) << "the second sees what the first has left";
}

TEST_F(Driver, CapsAtWhatIsLeft) {
    TestAsset asset = Furniture();
    asset.Record.PrevDepr[1] = Money("11500.25");
    EXPECT_EQ(asset.Compute(engine, YearEnd(2009)), Money("499.75"));
    asset.Record.PrevDepr[1] = Money("12000");
    EXPECT_EQ(asset.Compute(engine, YearEnd(2009)), Money("0"));
    EXPECT_EQ(engine.DeprStatusCode(), 0);
    asset.Record.PrevDepr[1] = Money("13000");
    EXPECT_EQ(asset.Compute(engine, YearEnd(2009)), Money("0"));
}

TEST_F(Driver, RoundsToTheDollarForTheLetterYAlone) {
    TestAsset asset("PP", kGenl, kSl, "7", "1000", Day(2000, 1, 1));
    engine.RoundText = "True";
    EXPECT_EQ(asset.Compute(engine, YearEnd(2001)), Money("142.86"));
    engine.RoundText = "Y";
    EXPECT_EQ(asset.Compute(engine, YearEnd(2001)), Money("143"));
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
        try {
            asset.Compute(engine, YearEnd(2003));
            ADD_FAILURE() << "method " << method;
        } catch (const PlatformError& failure) {
            EXPECT_EQ(failure.Code(), Failure::TypeMismatch);
        }
        EXPECT_EQ(asset.Record, before) << "method " << method;
    }
    TestAsset asset = Machine();
    EXPECT_THROW(engine.ComputeDepreciation(asset.Record, YearEnd(2000), false, 5), PlatformError);
}

TEST_F(Driver, MonthOfTheBookkeepingBook) {
    const auto month = [this](int computeMonth, int book, Date inService, Date asOf) {
        TestAsset asset("PP", kGenl, kSl, "10", "13330", inService);
        asset.Record.DeprType[book] = kGenl;
        asset.Record.DeprMethod[book] = kSl;
        asset.Record.Period[book] = Money("10");
        asset.Record.Basis[book] = Money("13330");
        asset.Record.Section179[book] = Money("1000");
        asset.Record.ADPct[book] = Money("10");
        asset.Record.IRSConvUsed[book] = "N";
        asset.Book = book;
        engine.ComputeMonth = static_cast<std::int16_t>(computeMonth);
        return asset.Compute(engine, asOf);
    };
    // (13,330 - 1,000) less 10% is 11,097: 1,109.70 a year.
    EXPECT_EQ(month(0, 3, Day(2002, 5, 1), YearEnd(2003)), Money("1109.70"));
    EXPECT_EQ(month(6, 1, Day(2002, 5, 1), YearEnd(2003)), Money("1109.70")) << "the other books know no month";
    EXPECT_EQ(month(6, 3, Day(2002, 5, 1), YearEnd(2003)), Money("92.48"));
    EXPECT_EQ(month(1, 3, Day(2002, 5, 1), YearEnd(2003)), Money("92.48")) << "any month is the same";
    // First year, month 5: 8 months left carry 739.84 + 1,000 + 1,233; the first is 1,109.70 x 0.6667 rounded to the cent.
    EXPECT_EQ(month(5, 3, Day(2003, 5, 20), YearEnd(2003)), Money("371.61"));
    EXPECT_EQ(month(4, 3, Day(2003, 5, 20), YearEnd(2003)), Money("0"));
    EXPECT_EQ(month(3, 3, Day(2004, 5, 20), YearEnd(2003)), Money("0"));
    EXPECT_EQ(engine.DeprStatusCode(), 7);
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
