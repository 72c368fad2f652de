#include <gtest/gtest.h>

#include "Assets.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {
namespace {

using test::Day;
using test::Money;
using test::TestAsset;
using test::YearEnd;

class Acrs : public testing::Test {
 protected:
    ADepre engine{test::kDeliveredTables};
};

TEST_F(Acrs, PercentagesOfTheRecoveryClasses) {
    const auto life = [this](std::string_view period, int method) {
        TestAsset asset("PP", kAcrs, method, period, "10000", Day(1983, 8, 1));
        return asset.ComputeYears(engine, YearEnd(1983), 12);
    };
    const auto three = life("3", kAc);
    EXPECT_EQ(three[0], Money("2500"));
    EXPECT_EQ(three[1], Money("3800"));
    EXPECT_EQ(three[2], Money("3700"));
    EXPECT_EQ(three[3], Money("0"));
    const auto five = life("5.9", kLh);
    EXPECT_EQ(five[0], Money("1500"));
    EXPECT_EQ(five[1], Money("2200"));
    EXPECT_EQ(five[4], Money("2100"));
    EXPECT_EQ(five[5], Money("0"));
    const auto ten = life("10", kUt);
    EXPECT_EQ(ten[0], Money("800"));
    EXPECT_EQ(ten[2], Money("1200"));
    EXPECT_EQ(ten[9], Money("900"));
    EXPECT_EQ(ten[10], Money("0"));
    EXPECT_EQ(life("15", kAc)[0], Money("0"));
    EXPECT_EQ(engine.DeprStatusCode(), 0);
}

TEST_F(Acrs, EveryHalfCentOfAPercentageGoesUp) {
    TestAsset asset("PP", kAcrs, kAc, "5", "0.50", Day(1983, 8, 1));  // 15% is 7.5 cents
    EXPECT_EQ(asset.Compute(engine, YearEnd(1983)), Money("0.08"));
    asset.Record.Basis[1] = Money("1234.50");  // 22% is 271.59
    EXPECT_EQ(asset.Compute(engine, YearEnd(1984)), Money("271.59"));
}

TEST_F(Acrs, StraightLineHasHalfYearsAtBothEnds) {
    TestAsset asset("PP", kAcrs, kSl, "5", "10000", Day(1983, 8, 1));
    const std::vector<CurrencyAmount> expected = {Money("1000"), Money("2000"), Money("2000"),
                                                  Money("2000"), Money("2000"), Money("1000")};
    EXPECT_EQ(asset.ComputeYears(engine, YearEnd(1983), 6), expected);
    TestAsset whole("PP", kAcrs, kSl, "5", "10000", Day(1983, 8, 1));
    whole.Convention("N");
    EXPECT_EQ(whole.Compute(engine, YearEnd(1983)), Money("2000"));
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
    const std::vector<CurrencyAmount> expected = {Money("2000"), Money("3200"),   Money("1920"),
                                                  Money("1152"), Money("691.20"), Money("414.72")};
    EXPECT_EQ(asset.ComputeYears(engine, YearEnd(2000), 6), expected);
    EXPECT_EQ(asset.Compute(engine, YearEnd(2006)), Money("0"));
    EXPECT_EQ(engine.DeprStatusCode(), 19);
}

TEST_F(Formula, SumOfTheYearsDigits) {
    TestAsset whole("PP", kGenl, kSy, "5", "15000", Day(2000, 1, 15));
    whole.Convention("N");
    const std::vector<CurrencyAmount> expected = {Money("5000"), Money("4000"), Money("3000"),
                                                  Money("2000"), Money("1000"), Money("0")};
    EXPECT_EQ(whole.ComputeYears(engine, YearEnd(2000), 6), expected);
    EXPECT_EQ(engine.DeprStatusCode(), 0);
    EXPECT_EQ(whole.Compute(engine, YearEnd(2006)), Money("0"));
    EXPECT_EQ(engine.DeprStatusCode(), 19);

    // From July on: half of 5/15 first; then the rest over 4.5 years, (4 + 1) x (4 + 1) = 25 in the denominator.
    TestAsset half("PP", kGenl, kSy, "5", "15000", Day(2000, 7, 15));
    half.Convention("N");
    const auto amounts = half.ComputeYears(engine, YearEnd(2000), 6);
    EXPECT_EQ(amounts[0], Money("2500"));
    EXPECT_EQ(amounts[1], Money("4500"));
    EXPECT_EQ(amounts[2], Money("3500"));
    EXPECT_EQ(amounts[5], Money("500"));
    EXPECT_EQ(half.Record.PrevDepr[1], Money("15000"));

    // The calendar month of the start counts even when the fiscal year ends in June.
    TestAsset fiscal("PP", kGenl, kSy, "5", "15000", Day(2000, 7, 15));
    fiscal.Convention("N");
    const auto fiscalAmounts = fiscal.ComputeYears(engine, Day(2001, 6, 30), 2);
    EXPECT_EQ(fiscalAmounts[0], Money("5000"));
    EXPECT_EQ(fiscalAmounts[1], Money("3600")) << "10,000 x 2 x 4.5 / 25";
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
