#pragma once

#include <cstdint>

namespace tallymar {

// Conversions of a double to an integer, ties to even (2.5 is 2, 3.5 is 4). Each fails with Failure::Overflow when the rounded
// value does not fit or when the double is not a number.
double RoundTiesToEven(double value);
std::int16_t ToInteger(double value);  // signed 16 bits
std::int32_t ToLong(double value);     // signed 32 bits

}  // namespace tallymar
