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

}  // namespace
}  // namespace tallymar
