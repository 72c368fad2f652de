#pragma once

namespace tallymar {

// The usual financial functions of equal payments at the end of each period, with nothing left over after the last one. Money
// paid out is negative, money received positive; a rate is that of one period, 0.01 being 1%.

// What the payments are worth at the start of the first period, with the sign turned. Failure::InvalidCall for a rate of -1 or
// below.
double PV(double rate, double periods, double payment);

// The rate at which the payments are worth the present value, above -1. Found to the last digits of the double, or after at most
// 100 steps to 1e-9 of its size; Failure::InvalidCall when no rate does it: fewer periods than one, or payment and present value
// not on opposite sides of 0.
double Rate(double periods, double payment, double presentValue);

}  // namespace tallymar
