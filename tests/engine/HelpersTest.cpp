#include "store/Helpers.h"

#include <gtest/gtest.h>

#include "Assets.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {
namespace {

using test::Day;
using test::Money;

TEST(RoundAmount, RoundsHalvesUpToCentsAndToDollarsForTheLetterYAlone) {
    const std::tuple<const char*, const char*, const char*> table[] = {
        {"2.005", "False", "2.01"},     {"-2.005", "False", "-2.00"}, {"1.005", "False", "1.01"},
        {"1234.56", "True", "1234.56"}, {"1234.56", "y", "1234.56"},  {"1234.50", "Y", "1235"},
        {"-1234.50", "Y", "-1234"},     {"0.495", "Y", "1"}};  // the cent is rounded first
    for (const auto& [amount, flag, expected] : table) {
        CurrencyAmount value = Money(amount);
        RoundAmount(value, flag);
        EXPECT_EQ(value, Money(expected)) << amount << ' ' << flag;
    }
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
    const Case cases[] = {{Day(2003, 3, 15), Day(2003, 12, 31), 1, 3},  {Day(2002, 8, 1), Day(2003, 6, 30), 1, 2},
                          {Day(2003, 7, 1), Day(2003, 6, 30), 0, 1},    {Day(2003, 12, 1), Day(2003, 12, 31), 1, 12},
                          {Day(2003, 12, 31), Day(2003, 12, 1), 1, 12},  // days play no part
                          {Day(2004, 1, 1), Day(2003, 12, 31), 0, 0},   {Day(2002, 7, 1), Day(2003, 6, 30), 1, 1},
                          {Day(2002, 6, 30), Day(2003, 6, 30), 2, 12},  {Day(1998, 1, 1), Day(2003, 1, 31), 6, 12}};
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

TEST(SplitCityState, TakesACodeAfterABlankOnly) {
    for (const auto& [stored, split] : {std::pair{"Denver co  ", "Denver|CO"},
                                        {"Denver, XX", "Denver, XX|??"},
                                        {"MEXICO", "MEXICO|??"},
                                        {"CO", "CO|??"},
                                        {"", "|??"}}) {
        std::string city = stored;
        std::string state = "??";
        SplitCityState(city, state);
        EXPECT_EQ(city + "|" + state, split);
    }
}

TEST(ScaledInteger, RoundsTiesToEvenAndFailsOutsideSixteenBits) {
    EXPECT_EQ(ScaledInteger(5.0F, 2.0F), 2);
    EXPECT_EQ(ScaledInteger(7.0F, 2.0F), 4);
    EXPECT_THROW(ScaledInteger(1.0F, 0.0F), PlatformError);
    EXPECT_THROW(ScaledInteger(70000.0F, 1.0F), PlatformError);
}

}  // namespace
}  // namespace tallymar
