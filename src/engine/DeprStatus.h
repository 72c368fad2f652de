#pragma once

#include <cstdint>
#include <string>

#include "platform/runtime/Date.h"

namespace tallymar {

// The numbers of the engine's statuses. Those that no computation sets any more keep their number and text, because lists and
// notes of earlier years name them.
enum DeprStatus : std::int16_t {
    kStatusInvalidInService = 1,
    kStatusSoldNoDepr = 5,
    kStatusBeforeInService = 7,
    kStatusNotAcrsMethod = 8,
    kStatusPeriodIsZero = 9,
    kStatusNoSwitchBasis = 11,
    kStatusSwitchYearError = 12,
    kStatusTableNotFound = 13,
    kStatusIncorrectType = 14,
    kStatusIncorrectMethod = 15,
    kStatusNonDepreciable = 17,
    kStatusPeriodCompleted = 19,
    kStatusInvalidSoldDate = 20,
    kStatusDepreciatedToSale = 51,
    kStatusDisposedNoDepr = 52,
};

// Puts the status's text into text, whose capacity is reused. abandoned chooses between the two texts of 51 and 52.
void PutDeprStatusText(int status, bool abandoned, Date dateSold, Date inService, std::string& text);

}  // namespace tallymar
