#include "platform/runtime/Annuity.h"

#include <cmath>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

constexpr int kMaxSteps = 100;
constexpr double kTolerance = 1e-9;

// The present value of 1 a period; it falls as the rate rises. By logarithm, because 1 - (1 + rate)^-periods has no digits left
// where the rate is small.
double AnnuityFactor(double rate, double periods) {
    return rate == 0 ? periods : -std::expm1(-periods * std::log1p(rate)) / rate;
}

}  // namespace

double PV(double rate, double periods, double payment) {
    if (!(rate > -1)) throw PlatformError(Failure::InvalidCall);
    return -payment * AnnuityFactor(rate, periods);
}

double Rate(double periods, double payment, double presentValue) {
    const double share = -payment / presentValue;  // of the present value that one payment is
    if (!(periods >= 1) || !(share > 0) || !std::isfinite(share)) {
        throw PlatformError(Failure::InvalidCall, "There is no interest rate at which these payments pay this amount");
    }
    // Payments for ever at the rate `share` would be worth the present value, so the rate lies below it; the first payment alone
    // is worth it at share - 1, so the rate lies above that. Halving cannot miss what lies between, as Newton's steps can.
    double below = share - 1;
    double above = share;
    for (int step = 0; step < kMaxSteps; ++step) {
        const double middle = below + (above - below) / 2;
        if (middle <= below || middle >= above) return middle;
        (AnnuityFactor(middle, periods) * share > 1 ? below : above) = middle;
    }
    if (above - below > kTolerance * std::fmax(1, share)) throw PlatformError(Failure::InvalidCall);
    return below + (above - below) / 2;
}

}  // namespace tallymar
