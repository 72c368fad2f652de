#pragma once

#include <cstdint>

#include "platform/runtime/CurrencyAmount.h"

// The three ways in which a computation goes through double, named so that each place of conversion shows.
namespace tallymar {

inline double Real(CurrencyAmount amount) {
    return amount.ToDouble();
}
inline double Real(int number) {
    return static_cast<double>(number);
}

// The one conversion back at the end of an expression in double: four decimals, ties to even.
inline CurrencyAmount ToAmount(double value) {
    return CurrencyAmount::FromDouble(value);
}

// A whole number of cents, as the percentage tables give it.
inline CurrencyAmount FromCents(std::int64_t cents) {
    return ToAmount(static_cast<double>(cents) / 100.0);
}

// amount x percentage (100 meaning all of it) rounded to the cent, every half cent upward: percent and cents cancel each other.
// The product keeps four decimals before that: 842.95 x 2.461% is 2,074.49995 cents, which become 2,074.5 and then 2,075.
inline CurrencyAmount PercentageToCent(CurrencyAmount amount, CurrencyAmount percentage) {
    constexpr CurrencyAmount kHalf = CurrencyAmount::FromTenThousandths(5000);
    return FromCents((amount * percentage + kHalf).WholePart());
}

}  // namespace tallymar
