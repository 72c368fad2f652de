#pragma once

#include <string_view>

namespace tallymar::sheets {

enum class NumberMeaning { Plain, Date, Percent };

// What a number shown in this format is: "m/d/yyyy" makes it a date, "0.00%" a percentage.
NumberMeaning MeaningOfFormat(std::string_view code);
// The same of the formats that .xlsx knows by number alone.
NumberMeaning MeaningOfBuiltInFormat(int number);

}  // namespace tallymar::sheets
