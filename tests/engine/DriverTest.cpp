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

TEST_F(Driver, WhatMakesADisposal) {
    struct Case {
        const char* What;
        bool Disposed;
        void (*Bend)(AssetRecord&);
    };
    const Case cases[] = {{"a date alone sells nothing", false, [](AssetRecord&) {}},
                          {"an exchange", true, [](AssetRecord& r) { r.LikeKind = true; }},
                          {"a casualty", true, [](AssetRecord& r) { r.Casualty = true; }},
                          {"an expense of the sale", true, [](AssetRecord& r) { r.SoldExpense = Money("0.01"); }},
                          {"a negative expense", false, [](AssetRecord& r) { r.SoldExpense = Money("-1"); }},
                          {"a sale for nothing, under the notice", true, [](AssetRecord& r) { r.Sold = r.Notice4 = true; }},
                          {"an exchange under the notice goes on depreciating", false, [](AssetRecord& r) {
                               r.SoldAmount = Money("10");
                               r.Sold = r.Notice4 = true;
                           }}};
    for (const Case& c : cases) {
        TestAsset asset = Furniture();
        asset.Record.DateSold = Day(2003, 6, 15);
        c.Bend(asset.Record);
        asset.Compute(engine, YearEnd(2003));
        EXPECT_EQ(engine.DeprStatusCode() == 51, c.Disposed) << c.What;
    }
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

TEST(DeprStatusTable, TextsThatNoComputationReaches) {
    const std::tuple<int, bool, const char*> table[] = {{6, false, "< CURRENT - In Service 1/5/2003"},
                                                        {52, true, "< ABANDONED - NO Depr. this Month/Year"},
                                                        {52, false, "< SOLD - NO Depr. this Month/Year"},
                                                        {21, false, "< ERROR   - "}};
    for (const auto& [code, abandoned, expected] : table) {
        std::string text;
        PutDeprStatusText(code, abandoned, Date(), Day(2003, 1, 5), text);
        EXPECT_EQ(text, expected);
    }
}

// GENL straight line under "M" gives (2 x SaleMonth - 1) / 24 of 1,200, so the amount tells the fiscal month of the sale.
TEST_F(Driver, PlacesTheSaleInItsFiscalYear) {
    struct Case {
        Date Sold, AsOf;
        const char* Amount;
        int Status;
    };
    const Date december = YearEnd(2003);
    const Date june = Day(2003, 6, 30);
    const Case cases[] = {{Day(2003, 5, 1), december, "450", 51},
                          {Day(2003, 12, 31), december, "1150", 51},
                          {Day(2004, 1, 1), december, "1200", 0},
                          {Day(2002, 12, 31), december, "0", 5},
                          {Day(2003, 8, 15), june, "1200", 0},
                          {Day(2002, 8, 15), june, "150", 51},
                          {Day(2003, 6, 1), june, "1150", 51},
                          {Day(2002, 6, 30), june, "0", 5},
                          {Day(2003, 5, 1), Day(2003, 12, 30), "450", 51}};
    for (const Case& c : cases) {
        EXPECT_EQ(Furniture().SoldOn(c.Sold).Compute(engine, c.AsOf), Money(c.Amount)) << c.Sold.Serial();
        EXPECT_EQ(engine.DeprStatusCode(), c.Status) << c.Sold.Serial();
    }
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

// Exactly 9% is the reduced credit. Between 4 and 5 years both tests hold, the second seeing what the first has left.
TEST_F(Driver, TaxCreditTakesHalfOffTheBasis) {
    const std::tuple<const char*, const char*, int, const char*> table[] = {
        {"100", "10", 1982, "1000"}, {"100", "10", 1983, "950"},  {"90", "10", 1983, "1000"}, {"60", "4", 1983, "970"},
        {"50", "4", 1983, "1000"},   {"100", "4.5", 1983, "900"}, {"91", "4.5", 1983, "909"}};
    for (const auto& [credit, classLife, year, expected] : table) {
        TestAsset asset("PP", kGenl, kSl, "1", "1000", Day(year, 1, 1));
        asset.Convention("N").Record.TaxCredit[1] = Money(credit);
        asset.Record.ClassLife = Money(classLife);
        EXPECT_EQ(asset.Compute(engine, YearEnd(year)), Money(expected)) << credit << ", " << classLife;
    }
}

TEST_F(Driver, CapsAtWhatIsLeft) {
    for (const auto& [previous, amount] : {std::pair{"11500.25", "499.75"}, {"12000", "0"}, {"13000", "0"}}) {
        TestAsset asset = Furniture();
        asset.Record.PrevDepr[1] = Money(previous);
        EXPECT_EQ(asset.Compute(engine, YearEnd(2009)), Money(amount));
        EXPECT_EQ(engine.DeprStatusCode(), 0);
    }
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
        EXPECT_EQ(test::FailureOf([&] { asset.Compute(engine, YearEnd(2003)); }), Failure::TypeMismatch);
        EXPECT_EQ(asset.Record, before) << "method " << method;
    }
    TestAsset asset = Machine();
    EXPECT_THROW(engine.ComputeDepreciation(asset.Record, YearEnd(2000), false, 5), PlatformError);
}

TEST_F(Driver, MonthOfTheBookkeepingBook) {
    struct Case {
        int ComputeMonth, Book;
        Date InService;
        const char* Amount;
        int Status = 0;
    };
    // (13,330 - 1,000) less 10% is 11,097: 1,109.70 a year. From month 5 on, 8 months left carry 739.84 + 1,000 + 1,233; the
    // first is 1,109.70 x 0.6667 rounded to the cent. The other books know no month, and any later month is the same.
    const Case cases[] = {{0, 3, Day(2002, 5, 1), "1109.70"}, {6, 1, Day(2002, 5, 1), "1109.70"},
                          {6, 3, Day(2002, 5, 1), "92.48"},   {1, 3, Day(2002, 5, 1), "92.48"},
                          {5, 3, Day(2003, 5, 20), "371.61"}, {4, 3, Day(2003, 5, 20), "0"},
                          {3, 3, Day(2004, 5, 20), "0", 7}};
    for (const Case& c : cases) {
        TestAsset asset("PP", kGenl, kSl, "10", "13330", c.InService, c.Book);
        asset.Convention("N").Record.Section179[c.Book] = Money("1000");
        asset.Record.ADPct[c.Book] = Money("10");
        engine.ComputeMonth = static_cast<std::int16_t>(c.ComputeMonth);
        EXPECT_EQ(asset.Compute(engine, YearEnd(2003)), Money(c.Amount)) << c.ComputeMonth << " in book " << c.Book;
        EXPECT_EQ(engine.DeprStatusCode(), c.Status);
    }
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
