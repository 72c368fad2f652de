#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallymar {

// Money, percentages (100 meaning 100%) and lives in years: a signed 64-bit count of ten-thousandths.
//
// Error policy: a result outside the 64 bits fails with Failure::Overflow; nothing wraps.
// Rounding policy: sums are exact. Only three things round, all at the fourth decimal with ties to even: FromDouble, the product
// of two amounts, and Parse of a text with more decimals. A ratio is formed by the caller in double, from ToDouble(), and comes
// back once through FromDouble. There is no implicit conversion to or from double: where each conversion stands is part of the
// result.
class CurrencyAmount {
 public:
    static constexpr std::int64_t kScale = 10000;

    constexpr CurrencyAmount() = default;

    static constexpr CurrencyAmount FromTenThousandths(std::int64_t count) { return CurrencyAmount(count); }
    static CurrencyAmount FromInteger(std::int64_t units);
    // value x 10000, formed in double, ties to even.
    static CurrencyAmount FromDouble(double value);
    // The whole of text as a plain decimal ("-1234.5", ".25"; no commas, no blanks, no exponent); nullopt when it is anything
    // else or does not fit.
    static std::optional<CurrencyAmount> Parse(std::string_view text);

    constexpr std::int64_t TenThousandths() const { return count_; }
    constexpr double ToDouble() const { return static_cast<double>(count_) / 10000.0; }
    // The value without superfluous decimals: "1234.5", "-0.25", "7". The inverse of Parse.
    std::string ToText() const;

    constexpr bool IsZero() const { return count_ == 0; }
    // The greatest whole number not above this one; the rounding of every "whole part" in the tax computations.
    std::int64_t WholePart() const;

    CurrencyAmount operator-() const;
    CurrencyAmount& operator+=(CurrencyAmount other);
    CurrencyAmount& operator-=(CurrencyAmount other);
    friend CurrencyAmount operator+(CurrencyAmount a, CurrencyAmount b) { return a += b; }
    friend CurrencyAmount operator-(CurrencyAmount a, CurrencyAmount b) { return a -= b; }
    // The exact product rounded to four decimals.
    friend CurrencyAmount operator*(CurrencyAmount a, CurrencyAmount b);

    friend constexpr auto operator<=>(CurrencyAmount, CurrencyAmount) = default;

 private:
    explicit constexpr CurrencyAmount(std::int64_t count) : count_(count) {}

    std::int64_t count_ = 0;
};

// Whole currency units as a constant: Units(7660).
constexpr CurrencyAmount Units(int units) {
    return CurrencyAmount::FromTenThousandths(units * CurrencyAmount::kScale);
}

// floor(amount x factor + 0.5), the product formed exactly so that every half goes up (0.145 x 100 is 14.5, which gives 15).
// The rounding idiom of the depreciation tables and of RoundAmount. Fails with Failure::Overflow.
std::int64_t WholePartOfProduct(CurrencyAmount amount, CurrencyAmount factor);

}  // namespace tallymar
