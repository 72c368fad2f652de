#include <gtest/gtest.h>

#include "Assets.h"
#include "engine/AutoLimitTable.h"

namespace tallymar {
namespace {

using test::Day;
using test::Money;
using test::TestAsset;
using test::YearEnd;

class AutoLimits : public testing::Test {
 protected:
    ADepre engine{"no tables"};
};

TestAsset Automobile(Date inService, std::string_view basis = "30000") {
    TestAsset asset("PP", kMcrs, kDb, "5", basis, inService);
    asset.Declining(200).Record.Auto[1] = true;
    return asset;
}

TEST_F(AutoLimits, RowsEndOnTheirLastDay) {
    struct Row {
        Date InService;
        std::size_t Year;
        int Limit;
    };
    const Row rows[] = {{Day(1950, 1, 1), 0, 0},      {Day(1986, 12, 31), 0, 0},  {Day(1987, 1, 1), 0, 2560},
                        {Day(1988, 12, 31), 0, 2560}, {Day(1989, 1, 1), 0, 2660}, {Day(1996, 12, 31).AddDays(0.75), 0, 3060},
                        {Day(1997, 1, 1), 0, 3160},   {Day(2050, 1, 1), 0, 3060}, {Day(1997, 12, 31), 2, 3050},
                        {Day(1998, 1, 1), 2, 2950},   {Day(1999, 6, 1), 1, 5000}, {Day(2000, 1, 1), 1, 4900}};
    for (const Row& row : rows) EXPECT_EQ(AutoLimitsFor(row.InService).Limits[row.Year], row.Limit) << row.InService.Serial();
}

TEST_F(AutoLimits, AWholeLifeAtTheLimit) {
    TestAsset asset = Automobile(Day(1995, 5, 1));
    const auto amounts = asset.ComputeYears(engine, YearEnd(1995), 16);
    EXPECT_EQ(amounts[0], Money("3060"));
    EXPECT_EQ(amounts[1], Money("4900"));
    EXPECT_EQ(amounts[2], Money("2950"));
    for (std::size_t year = 3; year < 13; ++year) EXPECT_EQ(amounts[year], Money("1775")) << "year " << year + 1;
    EXPECT_EQ(amounts[13], Money("1340")) << "what is left";
    EXPECT_EQ(amounts[14], Money("0"));
    EXPECT_EQ(asset.Record.PrevDepr[1], Money("30000"));
    EXPECT_EQ(engine.DeprStatusCode(), 0) << "an automobile's period is never completed";
}

TEST_F(AutoLimits, BehindItsPeriodTheMethodCountsNoMore) {
    TestAsset asset = Automobile(Day(1995, 5, 1)).Convention("N");
    asset.Record.PrevDepr[1] = Money("29000");
    EXPECT_EQ(asset.Compute(engine, YearEnd(2000)), Money("400")) << "year 6: 40% of what is left, no straight line";
    EXPECT_EQ(asset.Compute(engine, YearEnd(2001)), Money("1000")) << "year 7: the limit, up to what is left";
}

TEST_F(AutoLimits, ScaleWithBusinessUse) {
    TestAsset asset = Automobile(Day(1995, 5, 1));
    asset.Record.BusinessUse = Money("60");
    EXPECT_EQ(asset.Compute(engine, YearEnd(1995)), Money("1836"));
    EXPECT_EQ(asset.Record.DeprLimit[1], Money("1836"));
    EXPECT_EQ(asset.Compute(engine, YearEnd(1996)), Money("2940"));
}

TEST_F(AutoLimits, TheHigherFirstYearBeginsOnSeptember11) {
    EXPECT_EQ(Automobile(Day(2001, 9, 10)).Compute(engine, YearEnd(2001)), Money("3060"));
    EXPECT_EQ(Automobile(Day(2001, 9, 11)).Compute(engine, YearEnd(2001)), Money("6000")) << "20% is below 7,660";
    EXPECT_EQ(Automobile(Day(2001, 9, 11), "50000").Compute(engine, YearEnd(2001)), Money("7660"));
    TestAsset second = Automobile(Day(2001, 9, 11), "50000").Convention("Y");
    EXPECT_EQ(second.Compute(engine, YearEnd(2002)), Money("4900"));
}

TEST_F(AutoLimits, OtherTypesAndOlderAutomobilesHaveNone) {
    TestAsset old = Automobile(Day(1986, 5, 1));
    EXPECT_EQ(old.Compute(engine, YearEnd(1986)), Money("6000"));
    TestAsset general = Automobile(Day(1995, 5, 1));
    general.Record.DeprType[1] = kGenl;
    general.Record.DeprLimit[1] = Money("3060");
    EXPECT_EQ(general.Compute(engine, YearEnd(1996)), Money("12000"));
    EXPECT_EQ(general.Record.DeprLimit[1], Money("0"));
}

TEST_F(AutoLimits, Section179ComesBeforeTheAdditionalAmountAndTheMethodTakesTheRest) {
    struct Case {
        int Year, Basis, Section179, ADPct;
        const char *Expected179, *ExpectedAdditional, *ExpectedMethod;
    };
    const Case cases[] = {
        {1995, 30000, 1000, 0, "1000", "0", "2060"},    {1995, 30000, 3060, 0, "3060", "0", "0"},
        {1995, 30000, 9000, 0, "3060", "0", "0"},       {2002, 10000, 0, 30, "0", "3000", "1400"},  // all fit
        {2002, 20000, 0, 30, "0", "6000", "1660"},       // 6,000 + 2,800: the method gives way
        {2002, 30000, 0, 30, "0", "7660", "0"},          // 9,000: the additional amount itself is cut
        {2002, 20000, 5000, 30, "5000", "2660", "0"},    // 5,000 + 4,500
        {2002, 20000, 9000, 30, "7660", "0", "0"},       // Section 179 takes all
        {2002, 12660, 5000, 30, "5000", "2298", "362"},  // 5,000 + 2,298 + 1,072.40
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.Basis) + ", " + std::to_string(c.Section179));
        TestAsset asset = Automobile(Day(c.Year, 5, 1), std::to_string(c.Basis));
        asset.Record.Section179[1] = Units(c.Section179);
        asset.Record.ADPct[1] = Units(c.ADPct);
        EXPECT_EQ(asset.Compute(engine, YearEnd(c.Year)), Money(c.ExpectedMethod));
        EXPECT_EQ(asset.Record.AddlDepr[1], Money(c.ExpectedAdditional));
        EXPECT_EQ(asset.Record.Section179[1], Money(c.Expected179));
    }
}

TEST_F(AutoLimits, HoldInTheYearOfTheSaleToo) {
    TestAsset asset = Automobile(Day(1995, 5, 1), "90000").Convention("Y").SoldOn(Day(1997, 3, 1));
    EXPECT_EQ(asset.Compute(engine, YearEnd(1997)), Money("2950"));
    EXPECT_EQ(engine.DeprStatusCode(), 51);
    // A sold automobile of another type has the limit 0 in that year.
    asset.Record.DeprType[1] = kAds;
    asset.Convention("N");
    EXPECT_EQ(asset.Compute(engine, YearEnd(1997)), Money("0"));
}

}  // namespace
}  // namespace tallymar
