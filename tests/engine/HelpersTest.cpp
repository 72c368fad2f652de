#include "store/Helpers.h"

#include <gtest/gtest.h>

#include "Assets.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {
namespace {

using test::Day;
using test::Money;

CurrencyAmount Rounded(std::string_view amount, std::string_view flag) {
    CurrencyAmount value = Money(amount);
    RoundAmount(value, flag);
    return value;
}

TEST(RoundAmount, RoundsHalvesTowardPlusInfinity) {
    EXPECT_EQ(Rounded("2.005", "False"), Money("2.01"));
    EXPECT_EQ(Rounded("-2.005", "False"), Money("-2.00"));
    EXPECT_EQ(Rounded("-2.0051", "False"), Money("-2.01"));
    // In double these products lie below the half.
    EXPECT_EQ(Rounded("1.005", "False"), Money("1.01"));
    EXPECT_EQ(Rounded("1234567.145", "False"), Money("1234567.15"));
    EXPECT_EQ(Rounded("1234.5649", "False"), Money("1234.56"));
}

TEST(RoundAmount, KeepsCentsUnlessTheFlagIsTheLetterY) {
    EXPECT_EQ(Rounded("1234.56", "True"), Money("1234.56"));
    EXPECT_EQ(Rounded("1234.56", "y"), Money("1234.56"));
    EXPECT_EQ(Rounded("1234.50", "Y"), Money("1235"));
    EXPECT_EQ(Rounded("-1234.50", "Y"), Money("-1234"));
    EXPECT_EQ(Rounded("0.495", "Y"), Money("1")) << "the cent is rounded first";
}

TEST(PercentOf, KeepsFourDecimals) {
    EXPECT_EQ(PercentOf(Money("66.67")), Money("0.6667"));
    EXPECT_EQ(PercentOf(Money("33.3350")), Money("0.3334")) << "0.33335: ties to even";
    EXPECT_EQ(PercentOf(Money("-5")), Money("-0.05"));
}

TEST(YearsAndMonths, CountsFiscalYearsThatEndInTheMonthOfTheToDate) {
    struct Case {
        Date From, To;
        int Years, Months;
    };
    const Case cases[] = {
        {Day(2003, 3, 15), Day(2003, 12, 31), 1, 3},  {Day(2002, 8, 1), Day(2003, 6, 30), 1, 2},
        {Day(2003, 7, 1), Day(2003, 6, 30), 0, 1},    {Day(2003, 12, 1), Day(2003, 12, 31), 1, 12},
        {Day(2003, 12, 31), Day(2003, 12, 1), 1, 12},  // days play no part
        {Day(2004, 1, 1), Day(2003, 12, 31), 0, 0},   {Day(2002, 7, 1), Day(2003, 6, 30), 1, 1},
        {Day(2002, 6, 30), Day(2003, 6, 30), 2, 12},  {Day(1998, 1, 1), Day(2003, 1, 31), 6, 12},
    };
    for (const Case& c : cases) {
        const YearMonthCount count = YearsAndMonths(c.From, c.To);
        EXPECT_EQ(count.Years, c.Years) << c.From.Serial() << " to " << c.To.Serial();
        EXPECT_EQ(count.Months, c.Months) << c.From.Serial() << " to " << c.To.Serial();
    }
}

TEST(DaysBetween, IsZeroOnlyWhenTheYearsRunBackward) {
    EXPECT_EQ(DaysBetween(Day(2003, 1, 1), Day(2003, 12, 31)), 364);
    EXPECT_EQ(DaysBetween(Day(2003, 12, 31), Day(2003, 1, 1)), -364) << "within one year it may be negative";
    EXPECT_EQ(DaysBetween(Day(2004, 1, 1), Day(2003, 12, 31)), 0);
    EXPECT_EQ(DaysBetween(Day(2003, 1, 1), Day(2003, 1, 3).AddDays(0.5)), 2);
    EXPECT_EQ(DaysBetween(Day(2003, 1, 1), Day(2003, 1, 4).AddDays(0.5)), 4);
}

TEST(TextToDate, IsNoDateForAnythingElse) {
    EXPECT_EQ(TextToDate("8/15/2003"), Day(2003, 8, 15));
    EXPECT_TRUE(TextToDate("").IsNone());
    EXPECT_TRUE(TextToDate("2/30/2003").IsNone());
}

TEST(SplitCityState, TakesACodeBehindABlankOnly) {
    const auto split = [](std::string city) {
        std::string state = "??";
        SplitCityState(city, state);
        return city + "|" + state;
    };
    EXPECT_EQ(split("Denver co  "), "Denver|CO");
    EXPECT_EQ(split("DENVER CO"), "DENVER|CO");
    EXPECT_EQ(split("Denver, XX"), "Denver, XX|??");
    EXPECT_EQ(split("MEXICO"), "MEXICO|??");
    EXPECT_EQ(split("CO"), "CO|??");
    EXPECT_EQ(split(""), "|??");
}

TEST(ScaledInteger, RoundsTiesToEvenAndFailsOutsideSixteenBits) {
    EXPECT_EQ(ScaledInteger(5.0F, 2.0F), 2);
    EXPECT_EQ(ScaledInteger(7.0F, 2.0F), 4);
    EXPECT_THROW(ScaledInteger(1.0F, 0.0F), PlatformError);
    EXPECT_THROW(ScaledInteger(70000.0F, 1.0F), PlatformError);
}

TEST(Vocabularies, CodesOutsideTheTablesAreQuestionMarks) {
    EXPECT_EQ(DeprTypeCode(10), "COLL");
    EXPECT_EQ(DeprTypeCode(11), "????");
    EXPECT_EQ(DeprTypeCode(-1), "????");
    EXPECT_EQ(DeprMethodCode(6), "SY");
    EXPECT_EQ(DeprMethodCode(8), "??");
}

}  // namespace
}  // namespace tallymar
