#include "platform/runtime/Rounding.h"

#include <cmath>
#include <limits>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

template <typename Integer>
Integer RoundTo(double value) {
    const double rounded = RoundTiesToEven(value);
    if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max())) {
        throw PlatformError(Failure::Overflow);
    }
    return static_cast<Integer>(rounded);
}

}  // namespace

double RoundTiesToEven(double value) {
    // Not std::nearbyint: it follows the thread's rounding mode, which is not ours to trust.
    const double below = std::floor(value);
    const double part = value - below;
    if (part < 0.5) return below;
    if (part > 0.5) return below + 1.0;
    return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
}

std::int16_t ToInteger(double value) {
    return RoundTo<std::int16_t>(value);
}

std::int32_t ToLong(double value) {
    return RoundTo<std::int32_t>(value);
}

}  // namespace tallymar
