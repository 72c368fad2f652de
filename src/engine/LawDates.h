#pragma once

#include "platform/runtime/Date.h"

namespace tallymar {

// Additional first-year depreciation (Job Creation and Worker Assistance Act of 2002, IRC section 168(k)) is for property
// acquired after September 10, 2001.
inline constexpr Date kDayBeforeAdditionalDepreciation = Date::FromSerial(37144.0);   // 2001-09-10
inline constexpr Date kFirstDayOfAdditionalDepreciation = Date::FromSerial(37145.0);  // 2001-09-11

}  // namespace tallymar
