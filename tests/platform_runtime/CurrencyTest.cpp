#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include "platform/runtime/CurrencyAmount.h"
#include "platform/runtime/Rounding.h"
#include "support/Failures.h"

namespace tallymar {
namespace {

using test::FailureOf;
__extension__ using Wide = __int128;

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

CurrencyAmount Count(std::int64_t tenThousandths) {
    return CurrencyAmount::FromTenThousandths(tenThousandths);
}

// Amounts of every size: as many small ones as large ones.
class Amounts {
 public:
    std::int64_t Next() {
        const int bits = std::uniform_int_distribution<int>(0, 63)(random_);
        const auto magnitude = static_cast<std::int64_t>(random_() >> (63 - bits) >> 1);
        return random_() % 2 == 0 ? magnitude : -magnitude;
    }
    std::uint64_t Raw() { return random_(); }

 private:
    std::mt19937_64 random_{20030815};
};

TEST(Currency, SumsAreExactOrOverflow) {
    Amounts amounts;
    for (int i = 0; i < 20000; ++i) {
        const std::int64_t a = amounts.Next();
        const std::int64_t b = amounts.Next();
        const Wide sum = Wide(a) + b;
        if (sum < kMin || sum > kMax) {
            EXPECT_EQ(FailureOf([&] { Count(a) + Count(b); }), Failure::Overflow);
        } else {
            EXPECT_EQ((Count(a) + Count(b)).TenThousandths(), static_cast<std::int64_t>(sum));
            EXPECT_EQ(Count(a) + Count(b) - Count(b), Count(a));
        }
    }
    EXPECT_EQ(FailureOf([] { -Count(kMin); }), Failure::Overflow);
    EXPECT_EQ(FailureOf([] { Count(kMin) - Count(1); }), Failure::Overflow);
    EXPECT_EQ(FailureOf([] { CurrencyAmount::FromInteger(922337203685478); }), Failure::Overflow);
}

// The nearest is told by distance, not by the way it was found: no neighbour is closer, and of two as close it is the even one.
TEST(Currency, ProductIsTheNearestFourDecimalsTiesToEven) {
    Amounts amounts;
    int ties = 0;
    for (int i = 0; i < 50000; ++i) {
        std::int64_t a = amounts.Next() >> (i % 3 == 0 ? 0 : 30);
        std::int64_t b = amounts.Next() >> 32;
        if (i % 5 == 0) b = b / 5000 * 5000;  // makes ties frequent
        const Wide exact = Wide(a) * b;
        if (exact / 10000 > kMax || exact / 10000 < kMin) continue;
        const std::int64_t got = (Count(a) * Count(b)).TenThousandths();
        const Wide distance = exact - Wide(got) * 10000;
        ASSERT_LE(distance, 5000);
        ASSERT_GE(distance, -5000);
        if (distance == 5000 || distance == -5000) {
            ++ties;
            ASSERT_EQ(got % 2, 0) << a << " x " << b;
        }
    }
    EXPECT_GT(ties, 500);
    EXPECT_EQ(FailureOf([] { Count(kMax) * CurrencyAmount::FromInteger(2); }), Failure::Overflow);
}

// The oracle works on the decimal digits of the text alone.
TEST(Currency, ParseRoundsTheDigitsTiesToEven) {
    Amounts amounts;
    for (int i = 0; i < 20000; ++i) {
        const std::int64_t whole = amounts.Next() / 20000;
        std::string decimals = std::to_string(amounts.Raw()).substr(0, 1 + amounts.Raw() % 12);
        if (i % 4 == 0) decimals = decimals.substr(0, 4) + "5" + std::string(amounts.Raw() % 30, '0');
        if (i % 8 == 0) decimals += '1';
        const std::string text = std::to_string(whole) + "." + decimals;

        std::string kept = decimals.substr(0, 4);
        kept.append(4 - kept.size(), '0');
        std::int64_t expected = std::abs(whole) * 10000 + std::stoll(kept);
        const std::string rest = decimals.size() > 4 ? decimals.substr(4) : "";
        std::string half(std::max<std::size_t>(rest.size(), 1), '0');
        half.front() = '5';
        if (!rest.empty() && (rest > half || (rest == half && expected % 2 == 1))) ++expected;
        if (whole < 0) expected = -expected;

        const auto parsed = CurrencyAmount::Parse(text);
        ASSERT_TRUE(parsed) << text;
        ASSERT_EQ(parsed->TenThousandths(), expected) << text;
    }
}

TEST(Currency, TextRoundTripsAndRefusesWhatIsNoAmount) {
    Amounts amounts;
    for (int i = 0; i < 20000; ++i) {
        const CurrencyAmount amount = Count(amounts.Next());
        EXPECT_EQ(CurrencyAmount::Parse(amount.ToText()), amount);
    }
    for (const std::int64_t edge : {kMin, kMax, std::int64_t{0}, std::int64_t{-1}}) {
        EXPECT_EQ(CurrencyAmount::Parse(Count(edge).ToText()), Count(edge));
    }
    EXPECT_EQ(Count(-2500).ToText(), "-0.25");
    EXPECT_EQ(Count(kMin).ToText(), "-922337203685477.5808");
    for (const char* text : {"", "-", ".", "1,234", " 1", "1 ", "1e3", "--1", "1.2.3", "0x1", "922337203685477.5808",
                             "99999999999999999999999999999999999999999999"}) {
        EXPECT_FALSE(CurrencyAmount::Parse(text)) << text;
    }
}

TEST(Currency, FromDoubleRoundsTenThousandFoldTiesToEven) {
    // The product in double decides: 0.00015 is no tie, being 1.4999999999999998.
    const std::pair<double, int> table[] = {{0.00005, 0}, {0.00015, 1}, {0.00025, 2}, {0.00035, 4}, {-0.00025, -2}};
    for (const auto& [value, expected] : table) EXPECT_EQ(CurrencyAmount::FromDouble(value), Count(expected)) << value;
    Amounts amounts;
    for (int i = 0; i < 20000; ++i) {
        const std::int64_t count = amounts.Next() >> 14;  // below 2^50, where a double still tells the ten-thousandths apart
        EXPECT_EQ(CurrencyAmount::FromDouble(Count(count).ToDouble()), Count(count));
    }
    for (const double out : {9.3e14, -9.3e14, std::numeric_limits<double>::infinity(), std::nan("")}) {
        EXPECT_EQ(FailureOf([&] { CurrencyAmount::FromDouble(out); }), Failure::Overflow) << out;
    }
}

TEST(Currency, WholePartsGoTowardMinusInfinity) {
    for (const auto& [count, whole] : {std::pair{19999, 1}, {-1, -1}, {-20000, -2}}) EXPECT_EQ(Count(count).WholePart(), whole);
    const std::tuple<const char*, const char*, std::int64_t> table[] = {{"0.145", "100", 15},  // in double 14.499999999999998
                                                                        {"2.005", "100", 201},
                                                                        {"-2.005", "100", -200},  // halves go up
                                                                        {"-2.0051", "100", -201},
                                                                        {"922337203685477.5807", "1", 922337203685478}};
    for (const auto& [amount, factor, expected] : table) {
        EXPECT_EQ(WholePartOfProduct(*CurrencyAmount::Parse(amount), *CurrencyAmount::Parse(factor)), expected) << amount;
    }
    EXPECT_EQ(FailureOf([] { WholePartOfProduct(Count(kMax), Count(kMax)); }), Failure::Overflow);
}

TEST(Rounding, IntegersTakeTiesToEvenAndOverflow) {
    const std::pair<double, int> table[] = {
        {0.5, 0},           {1.5, 2},    {2.5, 2},          {-0.5, 0},         {-1.5, -2}, {0.49999999999999994, 0},
        {32.500000001, 33}, {-1e-20, 0}, {32767.49, 32767}, {-32768.5, -32768}};
    for (const auto& [value, expected] : table) {
        EXPECT_EQ(ToInteger(value), expected) << value;
        EXPECT_EQ(ToLong(value), expected) << value;
    }
    EXPECT_EQ(RoundTiesToEven(4503599627370497.5), 4503599627370498.0);
    for (const double out : {32767.5, -32769.0}) EXPECT_EQ(FailureOf([&] { ToInteger(out); }), Failure::Overflow) << out;
    for (const double out : {2147483647.5, std::nan("")}) EXPECT_EQ(FailureOf([&] { ToLong(out); }), Failure::Overflow) << out;
}

}  // namespace
}  // namespace tallymar
