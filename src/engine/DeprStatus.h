#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/runtime/Date.h"

namespace tallymar {

// The numbers of the engine's statuses. Numbers that no computation sets have their texts all the same.
enum DeprStatus : std::int16_t {
    kStatusNone = 0,
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

// abandoned chooses between the two texts of 51 and 52.
std::string DeprStatusText(int status, bool abandoned, Date dateSold, Date inService);

// Whether a status tells of an asset whose entries do not make a computation, so that its amount cannot be filed on: those whose
// text begins "< ERROR" (1 to 4, 8, 9, 11 to 16, 20, and any unknown number). An asset that is sold, not yet in service, not
// depreciable or depreciated to its end has been computed, whatever its amount.
bool IsErrorStatus(int status);

// The text of a status without what marks it as one: "Deprec. Table NOT Found".
std::string_view PlainStatusText(std::string_view statusText);

}  // namespace tallymar
