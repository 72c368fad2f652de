#pragma once

#include <array>

// Recovery percentages of ACRS personal property placed in service from 1981 on (IRC section 168(b)(1) of 1981; IRS Publication
// 534), in whole percent by year of recovery.
namespace tallymar {

struct AcrsClass {
    int Period;
    std::array<int, 10> Percent;
};

inline constexpr auto kAcrsClasses = std::to_array<AcrsClass>({
    {3, {25, 38, 37, 0, 0, 0, 0, 0, 0, 0}},
    {5, {15, 22, 21, 21, 21, 0, 0, 0, 0, 0}},
    {10, {8, 14, 12, 10, 10, 10, 9, 9, 9, 9}},
});

}  // namespace tallymar
