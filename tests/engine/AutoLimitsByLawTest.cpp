#include <fstream>
#include <numeric>
#include <sstream>

#include <gtest/gtest.h>

#include "Assets.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {
namespace {

using test::Day;
using test::Money;
using test::TestAsset;

const std::filesystem::path kDelivered = std::filesystem::path(TALLYMAR_SOURCE_DIR) / "data";

class AutoLimitsByLaw : public testing::Test {
 protected:
    AutoLimitsByLaw() { engine.BeginRun("False", std::make_shared<const Law>(ReadLaw({{kDelivered}}))); }

    ADepre engine{"no tables"};
};

TestAsset Automobile(Date inService, std::string_view cost, std::string_view group = "", std::string_view allowance = "0") {
    TestAsset asset("PP", kMcrs, kDb, "5", cost, inService);
    asset.Declining(200).Record.Auto[1] = true;
    asset.Record.TaxGroup = group;
    asset.Record.ADPct[1] = Money(allowance);
    return asset;
}

// Every automobile of vehicle-lives.txt, year by year, against the figures worked out there by hand.
TEST_F(AutoLimitsByLaw, WholeLivesComeOutAsWorkedOutByHand) {
    std::ifstream lives(TALLYMAR_SOURCE_DIR "/tests/engine/vehicle-lives.txt");
    ASSERT_TRUE(lives);
    int vehicles = 0;
    std::string vehicle;
    for (std::string line; std::getline(lives, line);) {
        std::istringstream words(line);
        std::string word;
        words >> word;
        if (word == "vehicle") vehicle = line;
        if (word != "years") continue;
        std::istringstream facts(vehicle);
        std::string group, inService, cost, allowance;
        facts >> word >> group >> inService >> cost >> allowance;
        TestAsset asset = Automobile(ParseIsoDate(inService).value(), cost, group, allowance);
        int year = asset.Record.InService.Year();
        for (std::string expected; words >> expected; ++year) {
            CurrencyAmount deduction = asset.Compute(engine, Day(year, 12, 31));
            asset.Record.PrevDepr[1] += deduction;
            if (year == asset.Record.InService.Year()) deduction += asset.Record.AddlDepr[1];
            EXPECT_EQ(deduction, Money(expected)) << vehicle << ", " << year;
        }
        EXPECT_EQ(asset.Record.PrevDepr[1] + asset.Record.AddlDepr[1], Money(cost)) << vehicle << ": all of it, and no more";
        EXPECT_EQ(asset.Compute(engine, Day(year, 12, 31)), Money("0")) << vehicle;
        ++vehicles;
    }
    EXPECT_EQ(vehicles, 14);
}

TEST_F(AutoLimitsByLaw, TheDayOfPurchaseDecidesBetweenAllowances) {
    TestAsset asset = Automobile(Day(2018, 1, 10), "80000", "", "40");
    asset.Record.Purchased = Day(2017, 9, 27);
    asset.Compute(engine, Day(2018, 12, 31));
    EXPECT_EQ(asset.Record.DeprLimit[1], Money("16400"));
    asset.Record.Purchased = Day(2017, 9, 28);
    asset.Compute(engine, Day(2018, 12, 31));
    EXPECT_EQ(asset.Record.DeprLimit[1], Money("18000"));
    asset.Record.ADPct[1] = Money("0");
    asset.Compute(engine, Day(2018, 12, 31));
    EXPECT_EQ(asset.Record.DeprLimit[1], Money("10000")) << "elected out";
    asset.Record.BusinessUse = Money("60");
    asset.Compute(engine, Day(2018, 12, 31));
    EXPECT_EQ(asset.Record.DeprLimit[1], Money("6000"));
}

// What Section 179 has taken of the first year's limit, the allowance has not: it waits with the rest.
TEST_F(AutoLimitsByLaw, Section179SharesTheFirstYearsLimit) {
    TestAsset asset = Automobile(Day(2017, 3, 1), "40000", "", "50");
    asset.Record.Section179[1] = Money("5000");
    const auto amounts = asset.ComputeYears(engine, Day(2017, 12, 31), 18);
    EXPECT_EQ(asset.Record.AddlDepr[1], Money("6160")) << "11,160 less 5,000";
    const CurrencyAmount sum = std::accumulate(amounts.begin(), amounts.end(), CurrencyAmount());
    EXPECT_EQ(sum + Money("11160"), Money("40000"));
}

TEST_F(AutoLimitsByLaw, OutsideTheTablesThereIsNoLimitBeforeAndNoAnswerAfter) {
    TestAsset old = Automobile(Day(1986, 12, 31), "40000");
    EXPECT_EQ(old.Compute(engine, Day(1986, 12, 31)), Money("8000"));
    TestAsset future = Automobile(Day(2031, 2, 1), "40000");
    EXPECT_EQ(future.Compute(engine, Day(2030, 12, 31)), Money("0")) << "not in service yet: nothing is asked";
    try {
        future.Compute(engine, Day(2031, 12, 31));
        FAIL() << "a limit nobody knows was applied";
    } catch (const PlatformError& failure) {
        EXPECT_EQ(failure.Code(), Failure::ItemNotFound);
        EXPECT_NE(std::string(failure.what()).find("2031-02-01"), std::string::npos) << failure.what();
    }
}

}  // namespace
}  // namespace tallymar
