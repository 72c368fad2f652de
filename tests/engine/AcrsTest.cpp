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

}  // namespace
}  // namespace tallymar
