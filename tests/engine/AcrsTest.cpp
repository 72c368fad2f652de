#include <gtest/gtest.h>

#include "Assets.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {
namespace {

using test::Amounts;
using test::Day;
using test::Money;
using test::TestAsset;
using test::YearEnd;

class Acrs : public testing::Test {
 protected:
    ADepre engine{test::kDeliveredTables};
};

TEST_F(Acrs, PercentagesOfTheRecoveryClasses) {
    const std::tuple<const char*, int, std::vector<CurrencyAmount>> classes[] = {
        {"3", kAc, Amounts({"2500", "3800", "3700", "0"})},
        {"5.9", kLh, Amounts({"1500", "2200", "2100", "2100", "2100", "0"})},
        {"10", kUt, Amounts({"800", "1400", "1200", "1000", "1000", "1000", "900", "900", "900", "900", "0"})},
        {"15", kAc, Amounts({"0"})}};
    for (const auto& [period, method, expected] : classes) {
        TestAsset asset("PP", kAcrs, method, period, "10000", Day(1983, 8, 1));
        EXPECT_EQ(asset.ComputeYears(engine, YearEnd(1983), static_cast<int>(expected.size())), expected) << period;
        EXPECT_EQ(engine.DeprStatusCode(), 0) << period;
    }
    TestAsset cents("PP", kAcrs, kAc, "5", "0.50", Day(1983, 8, 1));
    EXPECT_EQ(cents.Compute(engine, YearEnd(1983)), Money("0.08")) << "15% is 7.5 cents: up";
}

TEST_F(Acrs, StraightLineHasHalfYearsAtBothEnds) {
    TestAsset asset("PP", kAcrs, kSl, "5", "10000", Day(1983, 8, 1));
    EXPECT_EQ(asset.ComputeYears(engine, YearEnd(1983), 6), Amounts({"1000", "2000", "2000", "2000", "2000", "1000"}));
    TestAsset whole("PP", kAcrs, kSl, "5", "10000", Day(1983, 8, 1));
    EXPECT_EQ(whole.Convention("N").Compute(engine, YearEnd(1983)), Money("2000"));
}

TEST_F(Acrs, Disposal) {
    const auto sale = [this](std::string_view kind, int method, std::string_view convention, Date asOf = YearEnd(1985)) {
        TestAsset asset(kind, kAcrs, method, "5", "12000", Day(1983, 8, 1));
        return asset.Convention(convention).SoldOn(Day(1985, 7, 1)).Compute(engine, asOf);
    };
    EXPECT_EQ(sale("PP", kSl, "Y"), Money("1300.08")) << "6.5 months as 0.5417 of a year";
    EXPECT_EQ(engine.DeprStatusCode(), 51);
    EXPECT_EQ(sale("PP", kSl, "N"), Money("1200"));
    EXPECT_EQ(sale("PP", kSl, "Y", YearEnd(1986)), Money("0"));
    EXPECT_EQ(sale("RL", kSl, "N"), Money("1400")) << "7 of 12 months";
    EXPECT_EQ(sale("RL", kSl, "Y"), Money("2400"));
    EXPECT_EQ(sale("PP", kAc, "N"), Money("1470"));
    EXPECT_EQ(sale("PP", kAc, "Y"), Money("2520"));
}

TEST_F(Acrs, SwitchedAssetsRunOverThePeriodsLeft) {
    TestAsset asset("PP", kAcrs, kAc, "10.9", "10000", Day(1983, 8, 1));
    asset.Record.SwitchYear[1] = 1995;
    asset.Record.SwitchPeriod[1] = 5;
    asset.Record.SwitchBasis[1] = Money("1000.03");
    EXPECT_EQ(asset.Compute(engine, YearEnd(1994)), Money("0")) << "behind the table's last year, not yet switched";
    EXPECT_EQ(engine.DeprStatusCode(), 0);
    EXPECT_EQ(asset.Compute(engine, YearEnd(1995)), Money("166.67"));
    asset.Record.SwitchBasis[1] = Money("1000.05");
    asset.Record.SwitchPeriod[1] = 1;
    EXPECT_EQ(asset.Compute(engine, YearEnd(1999)), Money("100.01")) << "100.005: the half cent goes up";

    asset.Record.SwitchBasis[1] = Money("0.99");
    EXPECT_EQ(asset.Compute(engine, YearEnd(1995)), Money("0"));
    EXPECT_EQ(engine.DeprStatusText(), "< ERROR - SWITCHOVER with NO Basis");
    asset.Record.SwitchBasis[1] = Money("1");
    asset.Record.SwitchPeriod[1] = 11;
    asset.Compute(engine, YearEnd(1995));
    EXPECT_EQ(engine.DeprStatusText(), "< ERROR - SWITCHOVER Year Error");
    asset.Record.SwitchPeriod[1] = 10;
    EXPECT_EQ(asset.Compute(engine, YearEnd(1995)), Money("1"));
}

TEST_F(Acrs, OtherMethods) {
    TestAsset asset("PP", kAcrs, kMi, "5", "10000", Day(1983, 8, 1));
    asset.Compute(engine, YearEnd(1984));
    EXPECT_EQ(engine.DeprStatusCode(), 17);
    for (const int method : {int{kDb}, int{kSy}, 8}) {
        asset.Record.DeprMethod[1] = static_cast<std::int16_t>(method);
        asset.Record.DeprType[1] = kAcam;
        EXPECT_EQ(asset.Compute(engine, YearEnd(1984)), Money("0"));
        EXPECT_EQ(engine.DeprStatusText(), "< ERROR - NOT ACRS & AC, SL, LH or UT");
    }
}

TEST_F(Acrs, LongClassLivesAndAcamReadATable) {
    TestAsset building("RL", kAcrs, kAc, "15", "100000", Day(1983, 3, 1));
    building.Record.ClassLife = Units(10);
    EXPECT_EQ(building.Compute(engine, YearEnd(1984)), Money("0"));
    building.Record.ClassLife = Money("10.0001");
    EXPECT_EQ(building.Compute(engine, YearEnd(1984)), Money("11000"));
    building.Record.ClassLife = Units(5);
    building.Record.DeprType[1] = kAcam;
    EXPECT_EQ(building.Compute(engine, YearEnd(1984)), Money("11000"));
    EXPECT_EQ(building.Compute(engine, Day(1984, 2, 28)), Money("12000")) << "March is month 1 of a year to February";
}

// ---------------------------------------------------------------- the months-counting types

class Formula : public testing::Test {
 protected:
    ADepre engine{"no tables"};
};

TEST_F(Formula, CountsTheFirstYearsMonths) {
    for (const int type : {int{kAmrt}, int{kGenl}, int{kAds}, int{kAdr}}) {
        TestAsset asset("IN", type, kSl, "10", "10000", Day(2000, 7, 1));
        EXPECT_EQ(asset.Convention("N").Compute(engine, YearEnd(2000)), Money("500"));
        EXPECT_EQ(asset.Compute(engine, Day(2001, 6, 30)), Money("1000"));
    }
}

TEST_F(Formula, DecliningBalanceNeverSwitches) {
    TestAsset asset("PP", kGenl, kDb, "5", "10000", Day(2000, 7, 1));
    asset.Declining(200).Convention("N");
    EXPECT_EQ(asset.ComputeYears(engine, YearEnd(2000), 7), Amounts({"2000", "3200", "1920", "1152", "691.20", "414.72", "0"}));
    EXPECT_EQ(engine.DeprStatusCode(), 19);
}

TEST_F(Formula, SumOfTheYearsDigits) {
    const auto life = [this](Date inService, Date firstYearEnd, int years) {
        TestAsset asset("PP", kGenl, kSy, "5", "15000", inService);
        return asset.Convention("N").ComputeYears(engine, firstYearEnd, years);
    };
    EXPECT_EQ(life(Day(2000, 1, 15), YearEnd(2000), 6), Amounts({"5000", "4000", "3000", "2000", "1000", "0"}));
    EXPECT_EQ(engine.DeprStatusCode(), 0);
    life(Day(2000, 1, 15), YearEnd(2000), 7);
    EXPECT_EQ(engine.DeprStatusCode(), 19);
    // From July on: half of 5/15 first; then the rest over 4.5 years, (4 + 1) x (4 + 1) = 25 in the denominator.
    EXPECT_EQ(life(Day(2000, 7, 15), YearEnd(2000), 6), Amounts({"2500", "4500", "3500", "2500", "1500", "500"}));
    // The calendar month of the start counts even when the fiscal year ends in June: 10,000 x 2 x 4.5 / 25.
    EXPECT_EQ(life(Day(2000, 7, 15), Day(2001, 6, 30), 2), Amounts({"5000", "3600"}));
}

TEST_F(Formula, Disposal) {
    const auto sale = [this](int method, std::string_view convention, int month, int year = 2003) {
        TestAsset asset("PP", kGenl, method, "10", "12000", Day(2000, 1, 1));
        return asset.Declining(200).Convention(convention).SoldOn(Day(2003, month, 1)).Compute(engine, YearEnd(year));
    };
    EXPECT_EQ(sale(kSl, "N", 7), Money("600"));
    EXPECT_EQ(sale(kSl, "N", 1), Money("0"));
    EXPECT_EQ(engine.DeprStatusCode(), 51);
    EXPECT_EQ(sale(kSl, "M", 7), Money("650"));
    EXPECT_EQ(sale(kDb, "M", 7), Money("1300"));
    EXPECT_EQ(sale(kSl, "Y", 7), Money("1200"));
    EXPECT_EQ(sale(kSl, "Y", 7, 2004), Money("0"));
    EXPECT_EQ(engine.DeprStatusText(), "< SOLD 7/1/2003 - NO Depr. this Year");
}

}  // namespace
}  // namespace tallymar
